"""Reads and changes the text of a note as a screen reader does.

Usage: client.py PROGRAM
"""

import subprocess
import sys

from bus import Atspi, application, children, expect, fail, wait_for

TEXT = "heading 1 Groceries\nunchecked item milk\nchecked item bread\nsome *bold* words"


def note_below(accessible):
    if accessible.get_role() == Atspi.Role.TEXT and accessible.get_name() == "Note":
        return accessible
    return next(filter(None, map(note_below, children(accessible))), None)


def find_note():
    program = application("note-text-view")
    return note_below(program) if program is not None else None


def check(note):
    text = note.get_text_iface()
    expect(Atspi.Text.get_text(text, 0, -1), TEXT, "the text")
    expect(Atspi.Text.get_character_count(text), len(TEXT), "its length")

    heard = []
    listener = Atspi.EventListener.new(lambda event: heard.append((event.type, event.detail1, event.any_data)))
    listener.register("object:text-changed")
    listener.register("object:text-caret-moved")

    place = TEXT.index("milk") + 2
    Atspi.Text.set_caret_offset(text, place)
    wait_for("the caret to be told", lambda: [each for each in heard if "caret" in each[0] and each[1] == place])
    expect(Atspi.Text.get_caret_offset(text), place, "the caret")
    line = Atspi.Text.get_text_at_offset(text, place, Atspi.TextBoundaryType.LINE_START)
    expect(line.content, "unchecked item milk\n", "the caret's line")
    word = Atspi.Text.get_text_at_offset(text, place, Atspi.TextBoundaryType.WORD_START)
    expect(word.content, "milk", "the caret's word")
    box = Atspi.Text.get_character_extents(text, place, Atspi.CoordType.SCREEN)
    if box.width <= 0 or box.height <= 0:
        fail("a character has no room")

    action = note.get_action_iface()
    names = [Atspi.Action.get_action_name(action, i) for i in range(Atspi.Action.get_n_actions(action))]
    Atspi.Action.do_action(action, names.index("Toggle"))
    wait_for("the box to be told", lambda: [each for each in heard if "insert" in each[0] and each[2] == "checked item"])
    if not [each for each in heard if "delete" in each[0] and each[2] == "unchecked item"]:
        fail("the words of the old state were not taken back")
    expect(Atspi.Text.get_text(text, 0, -1), TEXT.replace("unchecked", "checked"), "the text with the box ticked")

    Atspi.EditableText.insert_text(note.get_editable_text_iface(), 0, "My ", 3)
    wait_for("an insertion to be told", lambda: [each for each in heard if each[2] == "My "])

    # The list of completions keeps the keyboard in the text, and still each choice is heard.
    chosen = []
    choices = Atspi.EventListener.new(lambda event: event.detail1 and chosen.append(event.source.get_name()))
    choices.register("object:state-changed:focused")
    Atspi.EditableText.insert_text(note.get_editable_text_iface(), 0, "@", 1)
    wait_for("the first completion to be told", lambda: chosen[-1:] == ["apple"])
    Atspi.EditableText.insert_text(note.get_editable_text_iface(), 0, "x", 1)
    wait_for("the next completion to be told", lambda: chosen[-1:] == ["banana"])


def main():
    program = subprocess.Popen([sys.argv[1]])
    try:
        Atspi.init()
        check(wait_for("the note's text", find_note))
    finally:
        program.terminate()
        program.wait()
    print("read, moved, ticked and edited")


if __name__ == "__main__":
    main()
