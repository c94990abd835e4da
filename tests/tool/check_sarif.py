# SPDX-License-Identifier: Apache-2.0
"""A log of findings is SARIF, and has the findings that the list has: check_sarif.py LOG SCHEMA LIST"""
import csv
import json
import sys
import urllib.parse

from jsonschema import Draft4Validator

failures = []


def fail(message):
    failures.append(message)


def check_form(log, schema):
    Draft4Validator.check_schema(schema)
    for error in Draft4Validator(schema).iter_errors(log):
        fail(f"{'/'.join(str(step) for step in error.absolute_path)}: {error.message[:200]}")


def check_rules(run):
    rules = run["tool"]["driver"]["rules"]
    for result in run["results"]:
        if rules[result["ruleIndex"]]["id"] != result["ruleId"]:
            fail(f"a result of {result['ruleId']} has the index of {rules[result['ruleIndex']]['id']}")
    unused = {rule["id"] for rule in rules} - {result["ruleId"] for result in run["results"]}
    if unused:
        fail(f"no result has the rules {sorted(unused)}")


def lines_of(name):
    """The lines of a document as sequences of UTF-16 units; broken bytes count as a character each."""
    with open(name, encoding="utf-8", errors="replace", newline="") as file:
        text = file.read()
    return [len(line.encode("utf-16-le")) // 2 for line in text.split("\n")]


def check_region(name, region, lines):
    for line, column in ((region["startLine"], region["startColumn"]), (region["endLine"], region["endColumn"])):
        if line > len(lines) or column > lines[line - 1] + 1:
            fail(f"{name} has no line {line} with a column {column}")
    if (region["startLine"], region["startColumn"]) > (region["endLine"], region["endColumn"]):
        fail(f"a region of {name} ends before it begins")


def check_results(run, listed):
    found = {name: [] for name in listed}
    for result in run["results"]:
        location = result["locations"][0]["physicalLocation"]
        name = urllib.parse.unquote(location["artifactLocation"]["uri"])
        found[name].append(result["ruleId"])
        lines = lines_of(name)
        check_region(name, location["region"], lines)
        for fix in result.get("fixes", []):
            for replacement in fix["artifactChanges"][0]["replacements"]:
                check_region(name, replacement["deletedRegion"], lines)
    for name, codes in listed.items():
        if found[name] != codes:
            fail(f"{name} has {found[name]}, listed are {codes}")
    checked = [urllib.parse.unquote(artifact["location"]["uri"]) for artifact in run["artifacts"]]
    if sorted(checked) != sorted(listed):
        fail("the artifacts are not the documents that were checked")


def main():
    log_name, schema_name, list_name = sys.argv[1:]
    with open(log_name, encoding="utf-8") as file:
        log = json.load(file)
    with open(schema_name, encoding="utf-8") as file:
        schema = json.load(file)
    with open(list_name, encoding="utf-8", newline="") as file:
        listed = {row["document"]: row["findings"].split() for row in csv.DictReader(file, delimiter="\t")}
    check_form(log, schema)
    if not failures:
        check_rules(log["runs"][0])
        check_results(log["runs"][0], listed)
    for message in failures[:20]:
        print(message)
    print(f"{len(log['runs'][0]['results'])} results in {len(listed)} documents")
    sys.exit(1 if failures or len(listed) < 300 else 0)


main()
