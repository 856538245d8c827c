"""What the lints share: the files they look at and how they report."""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
CODE_FOLDERS = ("Platform/", "Core/", "CommandLine/", "App/", "Server/", "Tests/", "Benchmarks/", "Fuzz/", "Tools/")
CODE_SUFFIXES = (".h", ".cpp")


def tracked_files():
    """The files of the working tree that version control knows or would take, as paths from the root."""
    names = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, check=True, capture_output=True).stdout.decode("utf-8").split("\0")
    return sorted(name for name in names if name and (ROOT / name).is_file())


def code_files():
    return [name for name in tracked_files() if name.startswith(CODE_FOLDERS) and name.endswith(CODE_SUFFIXES)]


def text_of(name):
    """The file's text, or nothing for a binary file."""
    contents = (ROOT / name).read_bytes()
    if b"\0" in contents[:8192]:
        return None
    try:
        return contents.decode("utf-8")
    except UnicodeDecodeError:
        return None


def finish(findings):
    """Prints what was found and ends the program."""
    for finding in findings:
        print(finding)
    if findings:
        print(f"{len(findings)} finding(s)")
    sys.exit(1 if findings else 0)
