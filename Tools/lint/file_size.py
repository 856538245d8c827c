#!/usr/bin/env python3
"""Files of code over 900 lines need a reason at their head: a comment "Long file: <reason>" in the first 20 lines."""

import re

import common

LIMIT = 900
REASON = re.compile(r"(?://|#).*\bLong file: \S+")


def finding_in(name, text):
    lines = text.splitlines()
    if len(lines) > LIMIT and not any(REASON.search(line) for line in lines[:20]):
        return f"{name}:1: {len(lines)} lines; split it by aspect, or open it with a comment “Long file: reason”"
    return None


def main():
    found = (finding_in(name, common.text_of(name) or "") for name in common.code_files())
    common.finish([finding for finding in found if finding])


if __name__ == "__main__":
    main()
