"""How each program is started and driven: the keys and clicks a person would use for the same actions."""

import pathlib
import shutil
import subprocess
import time

import libraries

LIMIT = 300.0


def package_version(package):
    return subprocess.run(["dpkg-query", "--show", "--showformat=${Version}", package], capture_output=True, text=True,
                          check=False).stdout


class Program:
    """One program on one desktop; sub-classes say how."""

    name = ""
    quit_keys = "ctrl+q"
    has_library = True
    switches = 20
    searches = 3

    def __init__(self, options):
        self.options = options
        self.desktop = self.meter = None

    def version(self):
        return package_version(self.name)

    def begin(self, desktop, meter):
        self.desktop, self.meter = desktop, meter

    def press(self, *keys, quiet=0.4):
        """Keys whose cost is not measured."""
        self.desktop.press(*keys)
        self.meter.rest(LIMIT, quiet)

    def take_keyboard(self):
        """Puts the keyboard where the actions want it, behind each start."""

    def find_middle(self):
        """Puts the caret into the middle of the large note, as the find field of every program can."""
        self.press("ctrl+f")
        self.desktop.type("middlemark")
        # A find bar may wait for the end of the typing; one program's blinking caret is never still for as long.
        time.sleep(1.2)
        self.meter.rest(LIMIT)
        self.press("Return")
        time.sleep(1.2)
        self.meter.rest(LIMIT)
        self.press("Escape")
        self.press("Right")

    def save(self):
        """For programs that do not save by themselves."""


class Quib(Program):
    name = "quib"

    def version(self):
        return subprocess.run([self.options.quib, "--version"], capture_output=True, text=True,
                              check=False).stdout.split()[-1]

    def prepare(self, home, _texts):
        shutil.copytree(self.options.library / "profile", home / "profile")

    def command(self, home):
        return [str(self.options.quib), "--profile", str(home / "profile")]

    def take_keyboard(self):
        self.press("ctrl+alt+2")

    def next_note(self, _index):
        self.desktop.press("ctrl+Page_Down")

    def search(self, word):
        self.desktop.press("ctrl+shift+f")
        self.desktop.type(word)

    def end_search(self):
        self.press("ctrl+a")
        self.press("BackSpace", quiet=1.2)

    def prepare_large(self):
        self.press("ctrl+o")
        self.desktop.type(libraries.LARGE_TITLE)
        self.meter.rest(LIMIT, 0.8)

    def open_large(self):
        self.desktop.press("Return")


class Gnote(Program):
    name = "gnote"
    # Each note stays open in a tab, and more tabs than these make its window wider than the screen.
    switches = 7
    # Until the list is there again behind each takes minutes.
    searches = 1

    def prepare(self, home, texts):
        libraries.write_gnote(texts, home)

    def command(self, _home):
        return ["gnote"]

    def next_note(self, index):
        self.desktop.click(35, 83)
        self.meter.rest(LIMIT, 0.15)
        self.desktop.click(400, 138 + 24 * index, times=2)

    def prepare_search(self):
        self.desktop.click(35, 83)
        self.meter.rest(LIMIT)

    def search(self, word):
        self.desktop.press("ctrl+f")
        self.meter.rest(LIMIT)
        self.desktop.type(word)

    def end_search(self):
        self.press("Escape", quiet=1.2)

    def prepare_large(self):
        self.desktop.click(35, 83)
        self.meter.rest(LIMIT)
        self.desktop.click(400, 186)
        self.meter.rest(LIMIT)
        self.press("End")

    def open_large(self):
        self.desktop.press("Return")


class Cherrytree(Program):
    name = "cherrytree"
    # One takes minutes.
    searches = 1

    def prepare(self, home, texts):
        libraries.write_cherrytree(texts, home)

    def command(self, home):
        return ["cherrytree", str(home / "library.ctb")]

    def take_keyboard(self):
        # From the text to the tree.
        self.press("ctrl+Tab")

    def next_note(self, _index):
        self.desktop.press("Down")

    def search(self, word):
        self.desktop.press("ctrl+shift+f")
        self.meter.rest(LIMIT)
        self.desktop.type(word)
        self.desktop.press("Return")

    def end_search(self):
        self.press("Escape")

    def prepare_large(self):
        """The tree has the keyboard."""

    def open_large(self):
        self.desktop.press("End")

    def find_middle(self):
        super().find_middle()
        self.press("ctrl+Tab")
        self.press("Right")

    def save(self):
        self.press("ctrl+s")


class Zim(Program):
    name = "zim"

    def prepare(self, home, texts):
        libraries.write_zim(texts, home)

    def command(self, home):
        return ["zim", "--standalone", str(home / "Notebook")]

    def index_command(self, home):
        return ["zim", "--index", str(home / "Notebook")]

    def next_note(self, _index):
        self.desktop.press("alt+Page_Down")

    def search(self, word):
        self.desktop.press("ctrl+shift+f")
        self.meter.rest(LIMIT)
        self.desktop.type(word)
        self.desktop.press("Return")

    def end_search(self):
        self.press("Escape")

    def prepare_large(self):
        self.press("ctrl+j")
        self.desktop.type("Zlarge")
        self.meter.rest(LIMIT, 0.8)

    def open_large(self):
        self.desktop.press("Return")

    def save(self):
        self.press("ctrl+s")


class Ghostwriter(Program):
    name = "ghostwriter"
    # An editor of single files: it has no notes to start with, to switch or to search.
    has_library = False

    def prepare(self, home, texts):
        libraries.write_ghostwriter(texts, home)

    def command(self, _home):
        return ["ghostwriter"]

    def prepare_large(self):
        self.press("ctrl+o")
        self.desktop.type(str(pathlib.Path(self.desktop.home) / "large.md"))
        self.meter.rest(LIMIT, 0.8)

    def open_large(self):
        self.desktop.press("Return")

    def save(self):
        self.press("ctrl+s")


ALL = {program.name: program for program in (Quib, Gnote, Cherrytree, Zim, Ghostwriter)}
