"""What clients of the accessibility bus share: waiting for it, and walking through what it shows."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds until something that does not come counts as missing


def fail(message):
    print(f"FAILED: {message}")
    sys.exit(1)


def wait_for(what, condition):
    """Runs the event loop until a condition holds, and gives what it gave.

    A condition that comes upon an object which the program has just given up is looked at anew, as a screen reader does.
    """
    context = GLib.MainContext.default()
    expired = []
    GLib.timeout_add_seconds(PATIENCE, lambda: expired.append(True))
    ticks = GLib.timeout_add(20, lambda: True)  # looked at again even where no event comes
    while not expired:
        try:
            found = condition()
        except GLib.Error:
            found = None
        if found:
            GLib.source_remove(ticks)
            return found
        context.iteration(True)
    return fail(f"waited in vain for {what}")


def expect(actual, expected, what):
    if actual != expected:
        fail(f"{what}: {actual!r} instead of {expected!r}")


def children(accessible):
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is not None:
            yield child


def application(name):
    """The application of that name, once it is on the bus."""
    return next((each for each in children(Atspi.get_desktop(0)) if each.get_name() == name), None)
