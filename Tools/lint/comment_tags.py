#!/usr/bin/env python3
"""Three tags open a remark in a comment: FIXME: a known fault, NOTE: a trap, OPTIMIZATION: a detour taken for speed."""

import re

import common

# In comments only: the words are fair game in strings, where notes are talked about.
FORBIDDEN = re.compile(r"(?://|/\*|^\s*\*|#).*\b(TOD[O]|XX[X]|HAC[K])\b")
SLOPPY = re.compile(r"(?://|/\*|#)\s*(FIXME|NOTE|OPTIMIZATION)\b(?!: \S)")
SUFFIXES = (".h", ".cpp", ".py", ".cmake", "CMakeLists.txt")


def findings_in(name, text):
    for number, line in enumerate(text.splitlines(), 1):
        found = FORBIDDEN.search(line)
        # Entities and attributes of notes are named after to-do items in capitals nowhere but in string literals.
        if found and '"' not in line[:found.start(1)]:
            yield f"{name}:{number}: the tag {found.group(1)}; use FIXME:, NOTE: or OPTIMIZATION:"
        found = SLOPPY.search(line)
        if found:
            yield f"{name}:{number}: {found.group(1)} is followed by a colon, a space and a sentence"


def main():
    findings = []
    for name in common.tracked_files():
        text = common.text_of(name)
        if text is not None and name.endswith(SUFFIXES) and not name.startswith("Tools/lint/"):
            findings += findings_in(name, text)
    common.finish(findings)


if __name__ == "__main__":
    main()
