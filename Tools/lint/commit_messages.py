#!/usr/bin/env python3
"""Checks commit messages: `Module: Imperative sentence` of at most 72 characters, a blank line, a body that says why.

Usage: Tools/lint/commit_messages.py [RANGE]    e.g. main~5..main; without a range the last commit
"""

import re
import subprocess
import sys

import common
import words

SUBJECT = re.compile(r"^[A-Z][\w/+.-]*(?:, [A-Z][\w/+.-]*)*: [A-Z][^ ]*( [^ ]+)+$")
EMPTY_WORDS = re.compile(r": (?:Refactor|Fix|Update|Cleanup|Clean up|Improve)(?: \w+)?$", re.IGNORECASE)
NOT_IMPERATIVE = re.compile(r": (?:\w+ed|\w+ing|Adds|Makes|Fixes|Uses|Removes) ")
IMPERATIVES_IN_ED = re.compile(r": (?:Need|Seed|Feed|Embed|Shed|Speed|Bring|String) ")


def findings_in(message):
    lines = message.rstrip("\n").split("\n")
    subject = lines[0]
    if len(subject) > 72:
        yield f"the subject has {len(subject)} characters; 72 at most"
    if subject.endswith("."):
        yield "the subject ends with a full stop"
    if not SUBJECT.match(subject):
        yield "the subject is “Module: Imperative sentence”"
    if EMPTY_WORDS.search(subject):
        yield "the subject names no behaviour"
    if NOT_IMPERATIVE.search(subject) and not IMPERATIVES_IN_ED.search(subject):
        yield "the subject commands: “Add”, not “Added” or “Adds”"
    if len(lines) < 3 or lines[1] != "" or not lines[2].strip():
        yield "a blank line and a body that says why follow the subject"
    yield from words.findings_in("message", message)


def main():
    wanted = sys.argv[1] if len(sys.argv) > 1 else "HEAD~1..HEAD"
    log = subprocess.run(["git", "log", "--no-merges", "--format=%h%x00%B%x01", wanted],
                         cwd=common.ROOT, check=True, capture_output=True, text=True).stdout
    findings = []
    for entry in filter(str.strip, log.split("\x01")):
        commit, message = entry.strip("\n").split("\x00", 1)
        findings += [f"{commit}: {finding}" for finding in findings_in(message)]
    common.finish(findings)


if __name__ == "__main__":
    main()
