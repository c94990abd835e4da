# SPDX-License-Identifier: Apache-2.0
"""The schema is one of draft-07 and judges documents: those of the corpus, and some for each row of the listings of
conditions and actions: check_schema.py SCHEMA DATA"""
import csv
import json
import pathlib
import re
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


class Row:
    """A condition or an action of the listings: how its values may be written, and which are wrong."""

    TEMPLATES = (6, 11)
    BITS = 7
    SIGNED = 3

    def __init__(self, columns):
        self.name, self.id = columns["name"], int(columns["id"])
        self.operators = [op for op in range(5) if int(columns["mask"]) >> op & 1] if "mask" in columns else []
        kind = int(columns["type"])
        options = re.findall(r'"([^"]*)"=(-?[0-9]+)', columns["options"] or "")
        if kind in self.TEMPLATES:
            options = []
        texts = [text for text, _ in options]
        numbers = sorted({int(number) % 2**32 for _, number in options})
        if kind == self.BITS:
            least, most = 0, sum(numbers)
            self.right = [*texts, texts, [texts[-1], least], [], least, most]
            self.wrong = [texts[0].upper(), ["", texts[0]], [None], texts[:1] * 2, least - 1, most + 1, 2**32, {}]
        elif options:
            between = [number + 1 for number in numbers if number + 1 not in numbers]
            self.right = [*texts, *numbers]
            self.wrong = [*between, -1, "", texts[0] + " ", texts[0].swapcase(), [texts[0]], {}]
        else:
            least, most = int(columns["min"]), int(columns["max"])
            self.right = [least, most]
            self.wrong = [least - 1, most + 1, least + 0.5, str(least), "", [least], {}]
            if least > 0 and kind != self.SIGNED:
                self.wrong.append(0)
        self.wrong += [None, True]
        self.has_zero = 0 in self.right if kind != self.SIGNED else True

    def entries(self):
        """Each value alone and in a record, as what is written and whether that is right."""
        needs_operator = len(self.operators) > 1
        usual = {"op": self.operators[-1]} if needs_operator else {}
        for value, is_right in [(value, True) for value in self.right] + [(value, False) for value in self.wrong]:
            yield {**usual, "value": value}, is_right
            if value != {}:
                yield value, is_right and not needs_operator
        yield usual, self.has_zero
        yield {**usual, "value": self.right[0], "val": 1}, False
        if self.operators:
            yield from self.comparisons()

    def comparisons(self):
        value = {"value": self.right[0]}
        for op in range(-1, 6):
            yield {"op": op, **value}, op in self.operators
        yield value, len(self.operators) == 1
        yield {"op": str(self.operators[0]), **value}, False


def check_row(validator, member, row):
    judged = 0
    policy = {"id": 1, "when": [{"Power Source": 0}]}
    for entry, is_right in row.entries():
        for name in (row.name, f"#{row.id}"):
            document = {"policies": [{**policy, member: [{name: entry}]}]}
            if validator.is_valid(document) != is_right:
                fail(f'{json.dumps({name: entry})} in "{member}" is {"refused" if is_right else "accepted"}')
            judged += 1
    return judged


def check_listings(validator, data):
    judged = 0
    for listing, member, rows in (("conditions.tsv", "when", 73), ("actions.tsv", "do", 168)):
        with open(data / listing, encoding="utf-8", newline="") as lines:
            found = [Row(columns) for columns in csv.DictReader(lines, delimiter="\t", quoting=csv.QUOTE_NONE)]
        if len(found) != rows:
            fail(f"{listing} has {len(found)} rows")
        judged += sum(check_row(validator, member, row) for row in found)
        for name in (rows, 2**32 - 1):
            value = {"op": 0, "value": 2**32 - 1} if member == "when" else 2**32 - 1
            if not validator.is_valid({"policies": [{"id": 1, "when": [{"#0": 0}], member: [{f"#{name}": value}]}]}):
                fail(f'"#{name}" is refused in "{member}"')
    return judged


def main():
    schema_path, data = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    schema = json.loads(schema_path.read_text(encoding="utf-8"), object_pairs_hook=without_repeats)
    if schema["$schema"] != "http://json-schema.org/draft-07/schema#":
        fail("the schema is not one of draft-07")
    Draft7Validator.check_schema(schema)
    check_references(schema)
    validator = Draft7Validator(schema)
    judged = check_documents(validator, data / "documents")
    made = check_listings(validator, data)
    for message in failures:
        print(message)
    print(f"{judged} documents of the corpus, {made} made of the listings, {len(schema['definitions'])} definitions")
    sys.exit(1 if failures else 0)


main()
