#!/usr/bin/env python3
"""Words that must not appear in the tree: pointers to outside papers, paths of one machine, clashes with Qt's names.

The patterns are written so that none of them matches its own line.
"""

import re

import common

PATTERNS = (
    (re.compile(r"\bspecificatio[n]s?\b", re.IGNORECASE), "say what holds and why, not where it is written"),
    (re.compile(r"\bPar[t] \d+(\.\d+)*\b"), "say what holds and why, not where it is written"),
    (re.compile(r"\bissu[e] #?\d+\b", re.IGNORECASE), "history belongs into the commit message"),
    (re.compile(r"(?<![\w.~-])/(?:work[/]|roo[t]/)"), "a path of one machine"),
    (re.compile(r"/tm[p]/[A-Za-z]"), "a path of one machine; ask for the temporary folder"),
    (re.compile(r"\b(?:AI|coding|language[- ]model|sub)[ -]?agent[s]?\b", re.IGNORECASE), "not a matter of the code"),
    (re.compile(r"\bLL[M]s?\b|\blanguage mode[l]\b|\bchat ?bo[t]\b", re.IGNORECASE), "not a matter of the code"),
    (re.compile(r"\b(?:class|struct|enum|using|namespace) (?:class )?QB[a-z]"), "a capital follows the prefix QB"),
)


def findings_in(name, text):
    for number, line in enumerate(text.splitlines(), 1):
        for pattern, reason in PATTERNS:
            found = pattern.search(line)
            if found:
                yield f"{name}:{number}: “{found.group(0)}”: {reason}"


def main():
    findings = []
    for name in common.tracked_files():
        findings += findings_in(name, name)
        text = common.text_of(name)
        # Notes kept as examples and test data say what they like.
        if text is not None and not name.startswith(("Resources/", "Tests/Data/", "Fuzz/Seeds/")):
            findings += findings_in(name, text)
    common.finish(findings)


if __name__ == "__main__":
    main()
