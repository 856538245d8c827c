#!/usr/bin/env python3
"""Include arrows follow the link lines: a folder includes only what its CMake target links, directly or through that.

Also: no windows below App, fonts and images through Platform/Graphics alone, no circle between modules, and the headers
of third-party C libraries only in sources and in headers named *_p.h.
"""

import re

import common

ROOTS = ("Platform", "Core")
MODULE = re.compile(r"^\s*quib_module\(\s*(\w+)([^)]*)\)", re.MULTILINE)
LINKED = re.compile(r"^\s*target_link_libraries\(\s*(\w+)([^)]*)\)", re.MULTILINE)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
WINDOWS = re.compile(r"^Qt(?:Widgets|PrintSupport|Svg)/|^QWidget|^QApplication$|^QMainWindow$|^QDialog")
PAINTING = re.compile(r"^QtGui/|^Q(?:Color|Font|FontMetrics|FontMetricsF|Image|Pixmap|Painter|GuiApplication)$")
FOREIGN = re.compile(r"^(?:sqlite3\.h|unicode/|plist/|libxml/|zlib\.h|zip\.h|libpq-fe\.h|hunspell/)")
KEYWORDS = {"DEPENDS", "PRIVATE", "PUBLIC", "INTERFACE"}


class Modules:
    """The targets and the folders they are made of."""

    def __init__(self, descriptions):
        """descriptions: folder -> text of its CMakeLists.txt."""
        self.target_of = {}
        self.links = {}
        for folder, text in descriptions.items():
            text = re.sub(r"#.*", "", text)
            for name, arguments in MODULE.findall(text):
                self.target_of[folder] = name
                self.links.setdefault(name, set()).update(set(arguments.split()) - KEYWORDS)
            for name, arguments in LINKED.findall(text):
                self.links.setdefault(name, set()).update(set(arguments.split()) - KEYWORDS)

    def reachable(self, target):
        seen, waiting = set(), [target]
        while waiting:
            name = waiting.pop()
            if name not in seen:
                seen.add(name)
                waiting.extend(self.links.get(name, ()))
        return seen

    def circles(self):
        return sorted(name for name in self.links
                      if any(name in self.reachable(linked) for linked in self.links[name] if linked != name))


def folder_of(include, files):
    """The folder of Platform or Core where an include in angle brackets is found, if any."""
    for root in ROOTS:
        name = f"{root}/{include}"
        if name in files:
            return name.rsplit("/", 1)[0]
    return None


def findings_in(name, text, modules, files):
    folder = name.rsplit("/", 1)[0]
    own = modules.target_of.get(folder)
    permitted = modules.reachable(own) if own else None
    for number, line in enumerate(text.splitlines(), 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        where, (bracket, include) = f"{name}:{number}", found.groups()
        if FOREIGN.match(include) and name.endswith(".h") and not name.endswith("_p.h"):
            yield f"{where}: <{include}> is for sources and headers named *_p.h"
        if WINDOWS.match(include):
            yield f"{where}: <{include}>: windows belong to App"
        if PAINTING.match(include) and folder != "Platform/Graphics":
            yield f"{where}: <{include}>: Platform/Graphics is the only door to painting"
        target_folder = folder_of(include, files) if bracket == "<" else None
        if bracket == '"' and ("/" in include) and not include.startswith("Generated/"):
            yield f"{where}: \"{include}\": quotation marks are for the same folder"
        if target_folder and target_folder != folder and permitted is not None:
            target = modules.target_of.get(target_folder)
            if target and target not in permitted:
                yield f"{where}: <{include}>: {own} does not link {target}"
        if folder.startswith("Platform") and target_folder and target_folder.startswith("Core"):
            yield f"{where}: <{include}>: Platform knows nothing of notes"


def main():
    tracked = common.tracked_files()
    descriptions = {name.rsplit("/", 1)[0]: common.text_of(name) for name in tracked
                    if name.startswith(ROOTS) and name.endswith("/CMakeLists.txt")}
    modules = Modules(descriptions)
    findings = [f"CMakeLists.txt:1: {name} depends on itself" for name in modules.circles()]
    for name in common.code_files():
        if name.startswith(tuple(f"{root}/" for root in ROOTS)):
            findings += findings_in(name, common.text_of(name) or "", modules, set(tracked))
    common.finish(findings)


if __name__ == "__main__":
    main()
