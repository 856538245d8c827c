#!/usr/bin/env python3
"""Every shell script passes shellcheck and stops at the first failing command."""

import shutil
import subprocess
import sys

import common


def main():
    if shutil.which("shellcheck") is None:
        print("shellcheck is not installed")
        sys.exit(77)
    scripts, findings = [], []
    for name in common.tracked_files():
        text = common.text_of(name)
        if text is not None and text.startswith("#!") and "bash" in text.split("\n", 1)[0]:
            scripts.append(name)
            if "\nset -euo pipefail\n" not in text:
                findings.append(f"{name}:1: “set -euo pipefail” is missing")
    if scripts:
        run = subprocess.run(["shellcheck", "--format=gcc", *scripts],
                             cwd=common.ROOT, capture_output=True, text=True, check=False)
        findings += run.stdout.splitlines()
    common.finish(findings)


if __name__ == "__main__":
    main()
