"""A desktop for one program: an X server, a window manager, a session bus, and a home of its own."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

WIDTH, HEIGHT = 1400, 900


class Desktop:
    """Made for one program and thrown away behind it. Use it in a with statement."""

    def __init__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="quib-compare."))
        self.processes = []
        self.server = None
        self.environment = {}

    def __enter__(self):
        try:
            self.begin()
        except BaseException:
            self.__exit__()
            raise
        return self

    def begin(self):
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
                                   "-nolisten", "tcp"], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        self.processes.append(server)
        self.server = server
        with os.fdopen(reading) as numbers:
            display = ":" + numbers.readline().strip()
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
                               env=self.variables(display), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.processes.append(bus)
        self.environment = self.variables(display)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        self.processes.append(subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL))
        for _ in range(600):
            if "window id" in self.output_of("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"):
                return
            time.sleep(0.05)
        raise RuntimeError("the window manager did not start")

    def __exit__(self, *_):
        for process in reversed(self.processes):
            process.terminate()
        for process in reversed(self.processes):
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def variables(self, display):
        """The environment of every program: nothing of the caller's desktop."""
        runtime = self.home / "runtime"
        runtime.mkdir(mode=0o700, exist_ok=True)
        return {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "HOME": str(self.home), "DISPLAY": display,
                "XDG_RUNTIME_DIR": str(runtime), "XDG_CONFIG_HOME": str(self.home / ".config"),
                "XDG_DATA_HOME": str(self.home / ".local/share"), "XDG_CACHE_HOME": str(self.home / ".cache"),
                "XDG_STATE_HOME": str(self.home / ".local/state"), "NO_AT_BRIDGE": "1",
                "QTWEBENGINE_DISABLE_SANDBOX": "1"}

    def start(self, command):
        log = open(self.home / "log", "ab")
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                   cwd=self.home)
        log.close()
        self.processes.append(process)
        return process

    def end(self, process, keys=None):
        """Asks the program to end by its own key, so that it writes what it keeps; then insists."""
        if keys and process.poll() is None:
            self.press(keys)
        for signal in (None, process.terminate, process.kill):
            if signal and process.poll() is None:
                signal()
            try:
                process.wait(20)
                break
            except subprocess.TimeoutExpired:
                continue
        self.processes.remove(process)

    def output_of(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False).stdout

    def press(self, *keys):
        """Presses keys, one behind the other, in whatever has the keyboard."""
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], env=self.environment, check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "30", text], env=self.environment, check=True)

    def click(self, x, y, times=1):
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(times), "--delay", "60", "1"],
                       env=self.environment, check=True)

    def title(self):
        """The title of the window that has the keyboard."""
        return self.output_of("xdotool", "getactivewindow", "getwindowname").strip()

    def wait_for_window(self, limit=120.0):
        """Waits until a window has the keyboard. One that has just gone may still be named for a moment."""
        deadline = time.monotonic() + limit
        while time.monotonic() < deadline:
            if self.output_of("xdotool", "getactivewindow", "getwindowgeometry"):
                return
            time.sleep(0.02)
        raise RuntimeError("no window came up")

    def fill_screen(self):
        """Makes the window that has the keyboard as large as the screen."""
        window = self.output_of("xdotool", "getactivewindow").strip()
        subprocess.run(["xdotool", "windowmove", window, "0", "0", "windowsize", window, str(WIDTH - 10),
                        str(HEIGHT - 40)], env=self.environment, check=True)

    def pixels(self):
        """What the screen shows, in bytes."""
        return subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], env=self.environment,
                              capture_output=True, check=True).stdout

    def save_picture(self, path):
        subprocess.run(["import", "-window", "root", str(path)], env=self.environment, check=True)


def changed_share(before, after):
    """The share of bytes that differ between two pictures."""
    before, after = before[::7], after[::7]
    return sum(a != b for a, b in zip(before, after)) / max(1, len(before))
