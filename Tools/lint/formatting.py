#!/usr/bin/env python3
"""Every file of code looks as clang-format writes it."""

import shutil
import subprocess
import sys

import common


def main():
    if shutil.which("clang-format") is None:
        print("clang-format is not installed")
        sys.exit(77)
    findings = []
    files = common.code_files()
    for start in range(0, len(files), 40):
        run = subprocess.run(["clang-format", "--dry-run", "--Werror", "--ferror-limit=1", *files[start:start + 40]],
                             cwd=common.ROOT, capture_output=True, text=True, check=False)
        findings += [line for line in run.stderr.splitlines() if ": error:" in line]
        if run.returncode != 0 and not findings:
            findings.append(run.stderr)
    common.finish(findings)


if __name__ == "__main__":
    main()
