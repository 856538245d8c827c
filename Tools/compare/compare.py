#!/usr/bin/env python3
"""Measures Quib beside other programs for notes: the same texts, the same actions, by keys and clicks in real windows.

usage: compare.py --library FOLDER --quib PROGRAM --results FILE [--only NAME,...]
                  [--steps NAME,...] [--starts N] [--pictures FOLDER]
       compare.py --results FILE --table

FOLDER is what the program CompareLibrary wrote (see Benchmarks/CompareLibrary.cpp); PROGRAM is Quib built with the
preset "benchmark". Each program gets an X server, a window manager, a session bus and a home of its own, which are gone
afterwards. Its figures are added to FILE at once, so that programs may be measured one by one; --table prints them all.
With --pictures the screen is saved behind every action: look at them, an action that did not happen costs nothing.

Needs the packages gnote cherrytree zim ghostwriter xvfb xdotool openbox imagemagick dbus-daemon x11-utils.
"""

import argparse
import collections
import json
import os
import pathlib
import re
import shutil
import statistics
import sys
import time

import libraries
from desktop import Desktop, changed_share
from meter import Cost, DidNotRest, Meter
from programs import ALL, LIMIT

NEEDED = ("Xvfb", "xdotool", "openbox", "import", "dbus-daemon", "xprop")
PHRASE = "sphinx of black quartz judge my vow pack my box wi"
# A key is over when its program has been quiet for this long; keys arrive one by one, as slowly as they are served.
KEY_QUIET = 0.06
# Programs that save by themselves have done so this long after the last key.
SAVE_SECONDS = 6
# What waits for the end of the typing before it searches waits less than this.
SEARCH_QUIET = 1.2
# The least share of the screen that another note, or what was found, changes.
CHANGE = 0.002


def words_to_search(texts):
    """Words that stand whole in about one note of a hundred, the longest first."""
    counts = collections.Counter()
    for text in texts[:-1]:
        counts.update({word for word in re.findall(r"\b[a-z]{5,9}\b", text)})
    target = len(texts) / 100
    near = sorted(counts, key=lambda word: (abs(counts[word] - target) > target / 3, -len(word), word))
    return near


class Session:
    """All actions of one program, in order."""

    def __init__(self, program, desktop, texts, options):
        self.program, self.desktop, self.texts, self.options = program, desktop, texts, options
        self.process = self.meter = None
        self.results = {"version": program.version(), "load": [os.getloadavg()[0]], "failures": []}

    def picture(self, name):
        if self.options.pictures:
            self.desktop.save_picture(self.options.pictures / f"{self.program.name}-{name}.png")

    def add(self, action, costs):
        """Notes the medians of several runs."""
        self.results[action] = {"processor": statistics.median(cost.processor for cost in costs),
                                "server": statistics.median(cost.server for cost in costs),
                                "wall": statistics.median(cost.wall for cost in costs), "runs": len(costs)}
        print(f"{self.program.name}: {action}: {self.results[action]}", flush=True)
        self.keep()

    def keep(self):
        """Puts what is known so far into the file, beside the figures of other programs."""
        path = self.options.results
        known = json.loads(path.read_text()) if path.exists() else {}
        known[self.program.name] = self.results
        path.write_text(json.dumps(known, indent=1) + "\n")

    def fail(self, what):
        self.results["failures"].append(what)
        print(f"{self.program.name}: {what}", flush=True)

    def run_once(self):
        """Starts the program and waits until it rests."""
        started = time.monotonic()
        process = self.desktop.start(self.program.command(self.desktop.home))
        self.process, self.meter = process, Meter(process.pid, self.desktop.server.pid)
        self.program.begin(self.desktop, self.meter)
        cost = Cost(self.meter)
        cost.used, cost.started = 0.0, started
        self.desktop.wait_for_window(LIMIT)
        cost.until_rest(LIMIT)
        self.desktop.fill_screen()
        self.meter.rest(LIMIT)
        return cost

    def start(self):
        if hasattr(self.program, "index_command"):
            before = os.times()
            self.desktop.output_of(*self.program.index_command(self.desktop.home))
            after = os.times()
            used = after.children_user + after.children_system - before.children_user - before.children_system
            self.results["index"] = used
        # The first start makes what later ones find: settings, caches, an index.
        self.run_once()
        costs = []
        for _ in range(self.options.starts):
            self.desktop.end(self.process, self.program.quit_keys)
            costs.append(self.run_once())
        self.add("start", costs)
        self.results["start"]["pss"] = self.meter.pss_megabytes()
        self.program.take_keyboard()
        self.picture("start")

    def switch(self):
        costs = []
        for index in range(self.program.switches):
            before = self.desktop.pixels()
            cost = Cost(self.meter)
            self.program.next_note(index)
            costs.append(cost.until_rest(LIMIT))
            if changed_share(before, self.desktop.pixels()) < CHANGE:
                self.fail(f"switch {index + 1} showed nothing new")
            if index % 5 == 0:
                self.picture(f"switch-{index}")
        self.add("switch", costs)

    def search(self):
        costs = []
        for number, word in enumerate(words_to_search(self.texts)[:self.program.searches]):
            if hasattr(self.program, "prepare_search"):
                self.program.prepare_search()
            before = self.desktop.pixels()
            cost = Cost(self.meter)
            self.program.search(word)
            costs.append(cost.until_rest(LIMIT, SEARCH_QUIET))
            self.picture(f"search-{number}")
            if changed_share(before, self.desktop.pixels()) < CHANGE:
                self.fail(f"the search for {word} showed nothing")
            self.program.end_search()
        self.add("search", costs)

    def large(self):
        self.program.prepare_large()
        before = self.desktop.pixels()
        cost = Cost(self.meter)
        self.program.open_large()
        self.add("open", [cost.until_rest(LIMIT)])
        self.picture("large")
        if changed_share(before, self.desktop.pixels()) < CHANGE:
            self.fail("the large note was not shown")

    def type(self):
        self.program.find_middle()
        self.picture("middle")
        whole = Cost(self.meter)
        costs = []
        for letter in PHRASE:
            cost = Cost(self.meter)
            self.desktop.press("space" if letter == " " else letter)
            costs.append(cost.until_rest(LIMIT, KEY_QUIET))
        self.add("key", costs)
        self.picture("typed")
        # What falls between the keys, or on one of them only, and the saving belong to typing too.
        self.program.save()
        time.sleep(SAVE_SECONDS)
        whole.until_rest(LIMIT)
        self.results["typing"] = {"processor": whole.processor / len(PHRASE), "server": whole.server / len(PHRASE)}
        self.results["key"]["pss"] = self.meter.pss_megabytes()

    def check_typed(self):
        """Whether the phrase is on disk once the program has ended."""
        for path in self.desktop.home.rglob("*"):
            if path.is_file() and path.suffix in ("", ".md", ".txt", ".note", ".ctb", ".sqlite"):
                if PHRASE.encode() in path.read_bytes().replace(b"\n", b" "):
                    return
        self.fail("what was typed is not on disk")

    def run(self):
        for step in (self.start, self.switch, self.large, self.type, self.search):
            if step.__name__ not in self.options.steps.split(","):
                continue
            if step in (self.switch, self.search) and not self.program.has_library:
                continue
            started = time.monotonic()
            try:
                step()
            except DidNotRest:
                used = self.meter.processor_seconds()
                self.fail(f"{step.__name__}: busy for more than {LIMIT:.0f} s, {used:.1f} s of processor since its start")
                self.picture(f"{step.__name__}-busy")
                break
            except RuntimeError as error:
                self.fail(f"{step.__name__}: {error}")
                self.picture(f"{step.__name__}-failed")
                break
            self.results["load"].append(os.getloadavg()[0])
            print(f"{self.program.name}: {step.__name__} took {time.monotonic() - started:.0f} s", flush=True)
        if "key" in self.results:
            self.desktop.end(self.process, self.program.quit_keys)
            self.check_typed()
        self.keep()


def cell(results, action, field, factor, digits):
    figures = results.get(action, {})
    if field not in figures:
        return "no"
    text = f"{figures[field] * factor:.{digits}f}"
    if field == "processor":
        text += f" ({(figures['processor'] + figures['server']) * factor:.{digits}f})"
    return text


def print_table(path):
    """The rows of the table in Docs/performance.md; in parentheses, with what the X server did for the program."""
    known = json.loads(path.read_text())
    rows = (("start, processor s", "start", "processor", 1, 2), ("start, wall s", "start", "wall", 1, 1),
            ("memory behind it, MB", "start", "pss", 1, 0),
            ("another note, processor ms", "switch", "processor", 1000, 1),
            ("another note, wall ms", "switch", "wall", 1000, 0),
            ("search, processor ms", "search", "processor", 1000, 0), ("search, wall s", "search", "wall", 1, 2),
            ("the large note opened, processor ms", "open", "processor", 1000, 0),
            ("the large note opened, wall s", "open", "wall", 1, 2),
            ("a key in its middle, processor ms", "key", "processor", 1000, 1),
            ("a key with its share of saving, processor ms", "typing", "processor", 1000, 1),
            ("a key in its middle, wall ms", "key", "wall", 1000, 0),
            ("memory with it open, MB", "key", "pss", 1, 0))
    names = [name for name in ALL if name in known]
    print("| | " + " | ".join(names) + " |")
    print("|---|" + "--:|" * len(names))
    for label, action, field, factor, digits in rows:
        print(f"| {label} | " + " | ".join(cell(known[name], action, field, factor, digits) for name in names) + " |")
    for name in names:
        loads = known[name]["load"]
        print(f"{name} {known[name]['version']}: load {min(loads):.1f} to {max(loads):.1f}; "
              f"{'; '.join(known[name]['failures']) or 'all actions happened'}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--library", type=pathlib.Path)
    parser.add_argument("--quib", type=pathlib.Path)
    parser.add_argument("--results", type=pathlib.Path, required=True)
    parser.add_argument("--only", default=",".join(ALL))
    parser.add_argument("--steps", default="start,switch,large,type,search")
    parser.add_argument("--starts", type=int, default=3)
    parser.add_argument("--pictures", type=pathlib.Path)
    parser.add_argument("--table", action="store_true")
    options = parser.parse_args()
    if options.table:
        print_table(options.results)
        return
    names = options.only.split(",")
    if not options.library or ("quib" in names and not options.quib) or not set(names) <= set(ALL):
        parser.error("--library, --quib and names of programs are needed")
    missing = [tool for tool in NEEDED if not shutil.which(tool)]
    if missing:
        sys.exit(f"compare.py: not installed: {', '.join(missing)}")
    if options.quib:
        options.quib = options.quib.resolve()
    if options.pictures:
        options.pictures.mkdir(parents=True, exist_ok=True)
    texts = json.loads((options.library / "texts.json").read_text(encoding="utf-8"))
    for name in names:
        with Desktop() as desktop:
            program = ALL[name](options)
            program.prepare(desktop.home, texts)
            Session(program, desktop, texts, options).run()


if __name__ == "__main__":
    main()
