"""Shows the program's window on a Wayland display of its own, where there is no other, and ends it.

Usage: window.py QUIB
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading

PATIENCE = 60  # seconds until something that does not come counts as missing
SKIPPED = 77
DISPLAY = "quib-test"


def fail(message):
    print(f"FAILED: {message}")
    sys.exit(1)


def check_tools():
    for tool in ("weston", "dbus-run-session", "qtpaths6"):
        if not shutil.which(tool):
            print(f"skipped: {tool} is missing")
            sys.exit(SKIPPED)
    plugins = subprocess.run(["qtpaths6", "--plugin-dir"], capture_output=True, text=True, check=True).stdout.strip()
    if not any(pathlib.Path(plugins, "platforms").glob("libqwayland*.so")):
        print("skipped: the toolkit's plugin is missing")
        sys.exit(SKIPPED)


def wait_for_line(stream, *patterns):
    """Reads what a process says until the patterns came, one behind the other. False where it says no more."""
    wanted = [re.compile(pattern) for pattern in patterns]
    for line in stream:
        if wanted[0].search(line):
            wanted.pop(0)
            if not wanted:
                return True
    return False


def drain(stream):
    """What nobody reads must not stop who says it."""
    threading.Thread(target=lambda: [None for _ in stream], daemon=True).start()


def start_compositor(environment):
    compositor = subprocess.Popen(
        ["weston", "--backend=headless-backend.so", "--use-pixman", f"--socket={DISPLAY}", "--idle-time=0"],
        env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    # The shell is started when the display already listens.
    if not wait_for_line(compositor.stdout, "launching '.*weston-desktop-shell'"):
        fail("the compositor did not start")
    drain(compositor.stdout)
    return compositor


def check(quib, environment):
    # What it says comes by a pipe of its own: the bus says things beside it, and in the middle of its lines.
    reading, writing = os.pipe()
    program = subprocess.Popen(["dbus-run-session", "--", "sh", "-c", 'exec 2>"$1"; echo $$ >&2; exec "$0"', quib,
                                f"/dev/fd/{writing}"],
                               env=dict(environment, WAYLAND_DEBUG="1"), pass_fds=(writing,), start_new_session=True)
    os.close(writing)
    said = open(reading, errors="replace")
    watch = threading.Timer(PATIENCE, lambda: os.killpg(program.pid, signal.SIGKILL))
    watch.start()
    try:
        process = said.readline().strip()
        # It asks for a window, names it, and hands over a picture of it.
        if not wait_for_line(said, r"xdg_surface@\d+\.get_toplevel", r'xdg_toplevel@\d+\.set_title\("Quib"\)',
                             r"wl_surface@\d+\.attach\(wl_buffer@\d+"):
            fail("no window was shown")
        drain(said)
        os.kill(int(process), signal.SIGTERM)
        if program.wait() != 0:
            fail(f"the program ended with {program.returncode}")
    finally:
        watch.cancel()


def main():
    check_tools()
    with tempfile.TemporaryDirectory() as home:
        runtime = pathlib.Path(home, "runtime")
        runtime.mkdir(mode=0o700)
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "QT_QPA_PLATFORM", "WAYLAND_SOCKET")}
        environment |= {"HOME": home, "XDG_RUNTIME_DIR": str(runtime), "QUIB_PROFILE": str(pathlib.Path(home, "profile"))}
        for variable in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"):
            environment[variable] = str(pathlib.Path(home, variable))
        compositor = start_compositor(environment)
        try:
            check(sys.argv[1], dict(environment, WAYLAND_DISPLAY=DISPLAY))
        finally:
            compositor.terminate()
            compositor.wait()
    print("the window was shown")


if __name__ == "__main__":
    main()
