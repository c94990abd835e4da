# SPDX-License-Identifier: Apache-2.0
"""The schema is one of draft-07, and judges the documents of the corpus: check_schema.py SCHEMA CORPUS"""
import json
import pathlib
import sys

from jsonschema import Draft7Validator

# What the schema says of the documents of a folder, and how many there are at least.
FOLDERS = {
    "accepted": (True, 110),
    "warned": (True, 30),
    "refused": (False, 150),
    # no schema can know what is wrong with these
    "refused-beyond": (True, 10),
}

failures = []


def fail(message):
    failures.append(message)


def without_repeats(members):
    names = [name for name, _ in members]
    for name in set(names):
        if names.count(name) > 1:
            fail(f"the schema has {name!r} twice in one object")
    return dict(members)


def references(value):
    if isinstance(value, dict):
        if "$ref" in value:
            if set(value) != {"$ref"}:
                fail(f"what stands beside the reference to {value['$ref']} does not count")
            yield value["$ref"]
        for name, inner in value.items():
            # "enum" holds values, and "properties" may well have a member of any name
            if name != "enum":
                yield from references(inner)
    elif isinstance(value, list):
        for inner in value:
            yield from references(inner)


def check_references(schema):
    used = set(references(schema))
    defined = {f"#/definitions/{name}" for name in schema["definitions"]}
    for name in sorted(used - defined):
        fail(f"{name} is not defined")
    for name in sorted(defined - used):
        fail(f"{name} is not used")


def check_documents(validator, corpus):
    judged = 0
    for folder, (is_accepted, least) in FOLDERS.items():
        documents = sorted((corpus / folder).glob("*.json"))
        if len(documents) < least:
            fail(f"only {len(documents)} documents are in {folder}")
        for path in documents:
            document = json.loads(path.read_text(encoding="utf-8-sig"))
            errors = [error.message[:200] for error in validator.iter_errors(document)]
            if is_accepted and errors:
                fail(f"{folder}/{path.name} is refused: {errors[0]}")
            if not is_accepted and not errors:
                fail(f"{folder}/{path.name} is accepted")
            judged += 1
    return judged


def main():
    schema_path, corpus = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    schema = json.loads(schema_path.read_text(encoding="utf-8"), object_pairs_hook=without_repeats)
    if schema["$schema"] != "http://json-schema.org/draft-07/schema#":
        fail("the schema is not one of draft-07")
    Draft7Validator.check_schema(schema)
    check_references(schema)
    judged = check_documents(Draft7Validator(schema), corpus)
    for message in failures:
        print(message)
    print(f"{judged} documents, {len(schema['definitions'])} definitions")
    sys.exit(1 if failures else 0)


main()
