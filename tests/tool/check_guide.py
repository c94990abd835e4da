#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Does what a guide tells its readers to do, in an empty folder, and compares what comes out with what it shows.

check_guide.py GUIDE FOLDER_OF_VQS: a fenced block of "console" has commands behind "$ ", each followed by all of its
output, and by "[exit N]" where N is not 0. A block behind <!-- file: NAME --> is what the reader saves as NAME.
"""
import difflib
import os
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"(?:<!-- file: (?P<file>\S+) -->\n)?```(?P<kind>\w*)\n(?P<text>.*?)^```$", re.DOTALL | re.MULTILINE)


def commands_of(text):
    """Pairs of a command and what is shown of it."""
    shown = []
    for line in text.splitlines():
        if line.startswith("$ "):
            shown.append((line[2:], []))
        else:
            shown[-1][1].append(line)
    return shown


def run(command, folder, environment):
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60, check=False)
    lines = done.stdout.decode("utf-8").splitlines()
    return lines + ([f"[exit {done.returncode}]"] if done.returncode != 0 else [])


def differences(command, shown, seen):
    if shown == seen:
        return []
    return [f"$ {command}", *difflib.unified_diff(shown, seen, "in the guide", "seen", lineterm="")]


def check(guide, folder, environment):
    """How many commands were run, and what differs."""
    ran, wrong = 0, []
    with open(guide, encoding="utf-8") as file:
        text = file.read()
    for block in BLOCK.finditer(text):
        if block["file"]:
            with open(os.path.join(folder, block["file"]), "w", encoding="utf-8", newline="\n") as target:
                target.write(block["text"])
        elif block["kind"] == "console":
            for command, shown in commands_of(block["text"]):
                ran += 1
                wrong += differences(command, shown, run(command, folder, environment))
    return ran, wrong


def main():
    guide, tools = (os.path.abspath(path) for path in sys.argv[1:])
    with tempfile.TemporaryDirectory() as folder:
        state = os.path.join(folder, ".state")
        environment = {**os.environ, "PATH": tools + os.pathsep + os.environ["PATH"], "HOME": state,
                       "XDG_STATE_HOME": state, "LC_ALL": "C.UTF-8"}
        os.mkdir(state)
        ran, wrong = check(guide, folder, environment)
    if wrong:
        print("\n".join(wrong))
        print("To mend: correct the guide, or the tool")
    if ran < 10:
        print(f"only {ran} commands were found in {guide}")
    print(f"{ran} commands run")
    sys.exit(1 if wrong or ran < 10 else 0)


main()
