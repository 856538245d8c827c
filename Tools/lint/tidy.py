#!/usr/bin/env python3
"""Runs clang-tidy, whose list in .clang-tidy is short and fatal.

Usage: Tools/lint/tidy.py --build FOLDER [--all | FILE...]

Without files: those that differ from the main line or are not yet committed; with --all, or QUIB_NIGHTLY=1 in the
environment, every source. Nothing to look at counts as skipped.
"""

import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

import common

SKIPPED = 77


def git(*arguments):
    run = subprocess.run(["git", *arguments], cwd=common.ROOT, capture_output=True, text=True, check=False)
    return run.stdout if run.returncode == 0 else ""


def changed_files():
    names = set(git("diff", "--name-only", "HEAD").split("\n"))
    for main_line in ("origin/main", "main"):
        base = git("merge-base", "HEAD", main_line).strip()
        if base:
            names |= set(git("diff", "--name-only", base, "HEAD").split("\n"))
            break
    return names


def write_database(database, folder):
    """The compile commands without the precompiled headers, which are another compiler's."""
    for entry in database:
        entry["command"] = re.sub(r" -include \S*cmake_pch\.hxx| -Winvalid-pch| -fpch-preprocess", "", entry["command"])
        # The launcher in front of the compiler is not one of its arguments.
        entry["command"] = re.sub(r"^.*? (?=\S*/(?:c|g|clang)\+\+\S* )", "", entry["command"])
    folder.mkdir(exist_ok=True)
    (folder / "compile_commands.json").write_text(json.dumps(database), encoding="utf-8")
    return folder


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("files", nargs="*")
    arguments = parser.parse_args()

    database = json.loads((arguments.build / "compile_commands.json").read_text(encoding="utf-8"))
    known = {os.path.relpath(entry["file"], common.ROOT) for entry in database}
    sources = {name for name in common.code_files() if name.endswith(".cpp")}
    if arguments.files:
        sources &= set(arguments.files)
    elif not (arguments.all or os.environ.get("QUIB_NIGHTLY")):
        sources &= changed_files()
    sources = sorted(sources & known)
    if not sources:
        print("no source to look at")
        sys.exit(SKIPPED)

    folder = write_database(database, arguments.build / "tidy")

    def check(name):
        command = ["clang-tidy", "--quiet", "-p", str(folder), "--extra-arg=-Wno-unknown-warning-option",
                   "--extra-arg=-Wno-unused-command-line-argument", name]
        return subprocess.run(command, cwd=common.ROOT, capture_output=True, text=True, check=False)

    findings = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count() or 1) as workers:
        for name, run in zip(sources, workers.map(check, sources)):
            if run.returncode != 0:
                findings.append(f"{name}:\n{run.stdout}{run.stderr}")
    print(f"{len(sources)} source(s) checked")
    common.finish(findings)


if __name__ == "__main__":
    main()
