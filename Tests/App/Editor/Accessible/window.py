"""Goes through the program's window by the keyboard and hears what a screen reader would say.

Usage: window.py QUIB QUIBCTL
"""

import os
import subprocess
import sys
import tempfile

from bus import Atspi, GLib, application, children, expect, fail, wait_for

NOTES = ["# Garden plan #garden", "# Soup of the week #kitchen/soups", "# Reading list"]
# Whatever takes the keyboard, or can be pressed, is announced by its name.
ANNOUNCED = {
    Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.COMBO_BOX, Atspi.Role.ENTRY,
    Atspi.Role.TEXT, Atspi.Role.LIST, Atspi.Role.LIST_ITEM, Atspi.Role.TREE, Atspi.Role.TREE_ITEM, Atspi.Role.TABLE,
    Atspi.Role.TABLE_CELL, Atspi.Role.MENU_ITEM, Atspi.Role.FRAME,
}
KEYS = {"Control": 0xFFE3, "Shift": 0xFFE1, "Alt": 0xFFE9, "Down": 0xFF54, "Up": 0xFF52, "Return": 0xFF0D,
        "Escape": 0xFF1B, "End": 0xFF57}


def press(*names):
    """Presses keys together, as a hand does."""
    codes = [KEYS.get(name) or ord(name) for name in names]
    for code in codes[:-1]:
        Atspi.generate_keyboard_event(keycode(code), None, Atspi.KeySynthType.PRESS)
    Atspi.generate_keyboard_event(codes[-1], None, Atspi.KeySynthType.SYM)
    for code in reversed(codes[:-1]):
        Atspi.generate_keyboard_event(keycode(code), None, Atspi.KeySynthType.RELEASE)


def keycode(symbol):
    """Modifiers are pressed by their places on the keyboard."""
    return {0xFFE3: 37, 0xFFE1: 50, 0xFFE9: 64}[symbol]


def is_seen(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.SHOWING)


def everything(accessible, depth=0):
    yield accessible
    if depth < 30:
        for child in children(accessible):
            if is_seen(child):
                yield from everything(child, depth + 1)


def find(window, role, name):
    return next((each for each in everything(window) if each.get_role() == role and each.get_name() == name), None)


def check_names(window):
    for each in everything(window):
        states = each.get_state_set()
        is_announced = each.get_role() in ANNOUNCED or states.contains(Atspi.StateType.FOCUSABLE)
        if is_announced and not (each.get_name() or "").strip():
            fail(f"a {each.get_role_name()} has no name, in {each.get_parent().get_name()!r}")
        if states.contains(Atspi.StateType.FOCUSABLE) and each.get_role() in (Atspi.Role.INVALID, Atspi.Role.UNKNOWN):
            fail(f"{each.get_name()!r} takes the keyboard and has no role")
    return True


def check(program):
    window = wait_for("the window", lambda: next(
        (each for each in children(program) if each.get_role() == Atspi.Role.FRAME and is_seen(each)), None))
    # 1. What stands in it.
    for role, name in ((Atspi.Role.TREE, "Lists and tags"), (Atspi.Role.TEXT, "Search notes"),
                       (Atspi.Role.TEXT, "Note")):
        wait_for(f"the {name}", lambda: find(window, role, name))
    notes = wait_for("the list", lambda: find(window, Atspi.Role.LIST, "Notes"))
    rows = wait_for("the rows", lambda: [each.get_name() for each in children(notes)])
    expect(len(rows), len(NOTES), "the number of rows")
    for title in ("Garden plan", "Soup of the week", "Reading list"):
        if not [row for row in rows if title in row]:
            fail(f"no row says {title!r}")
    wait_for("the names", lambda: check_names(window))

    # 2. What is heard while the keyboard goes through it.
    heard = []

    def hear(event):
        if event.detail1:
            try:
                heard.append((event.source.get_role(), event.source.get_name() or ""))
            except GLib.Error:
                pass  # an entry that is gone by now

    listener = Atspi.EventListener.new(hear)
    listener.register("object:state-changed:focused")

    def hears(what, keys, role, name):
        heard.clear()
        press(*keys)
        wait_for(what, lambda: [each for each in heard if each[0] == role and name in each[1]])

    entry = Atspi.Role.TABLE_CELL  # as the toolkit calls entries of a tree
    hears("the sidebar", ("Control", "Alt", "1"), entry, "Notes")
    press("Down")
    wait_for("the next list", lambda: [each for each in heard if each[0] == entry and "Notes" not in each[1]])
    hears("the list before", ("Up",), entry, "Notes")
    hears("the list of notes", ("Control", "Alt", "2"), Atspi.Role.LIST_ITEM, "Reading list")
    hears("the next note", ("Down",), Atspi.Role.LIST_ITEM, "Soup of the week")
    hears("the last note", ("Down",), Atspi.Role.LIST_ITEM, "Garden plan")
    hears("the search field", ("Control", "Shift", "f"), Atspi.Role.TEXT, "Search notes")
    hears("the text", ("Control", "Alt", "3"), Atspi.Role.TEXT, "Note")

    # 3. Completions take the keyboard for the ear only.
    press("Control", "End")
    press("Return")
    heard.clear()
    for letter in "#ki":
        press(letter)
    wait_for("the first completion", lambda: [each for each in heard if "kitchen" in each[1]])
    hears("the next completion", ("Down",), Atspi.Role.LIST_ITEM, "kitchen/soups")
    hears("the text again", ("Escape",), Atspi.Role.TEXT, "Note")

    # 4. What changes beside the keyboard says nothing: a tag that was written comes into the sidebar.
    heard.clear()
    wait_for("the new tag", lambda: [each for each in everything(window) if each.get_role() == entry
                                     and (each.get_name() or "").split(",")[0] == "ki"])
    expect([name for role, name in heard if role == entry], [], "entries that were told without the keyboard")


def main():
    quib, quibctl = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as home:
        environment = dict(os.environ, HOME=home, QUIB_PROFILE=os.path.join(home, "profile"))
        for variable in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"):
            environment[variable] = os.path.join(home, variable)
        for note in NOTES:
            subprocess.run([quibctl, "new", "-"], input=note.encode(), env=environment, check=True,
                           stdout=subprocess.DEVNULL)
        program = subprocess.Popen([quib], env=environment)
        try:
            Atspi.init()
            check(wait_for("the program", lambda: application("quib")))
        finally:
            program.terminate()
            program.wait()
    print("went through the whole window")


if __name__ == "__main__":
    main()
