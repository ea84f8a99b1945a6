"""A desktop of our own for the end-to-end tests and the measurements: an X server without a screen (Xvfb), a
window manager that gives every window the corner and no frame, and the viewer in it.

The server keeps its frame buffer in a file, which is mapped here: looking at the screen costs no request to
the server, so it can be polled every fraction of a millisecond without disturbing what is measured.
"""
import mmap
import os
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# The build that is looked at; QUORL_BUILD names another one.
BUILD = os.path.join(ROOT, os.environ.get("QUORL_BUILD", os.path.join("build", "release")))
PROGRAM = os.path.join(BUILD, "bin", "quorl")
SNAPSHOT = os.path.join(BUILD, "bin", "quorl-snapshot")

# Longest wait for anything to happen; a wait that ends here is a failure, so it may be generous.
PATIENCE_S = 20.0

OPENBOX_SETTINGS = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><keepBorder>no</keepBorder></theme>
  <focus><focusNew>yes</focusNew></focus>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <applications>
    <application class="*" type="normal">
      <decor>no</decor>
      <position force="yes"><x>0</x><y>0</y></position>
    </application>
  </applications>
</openbox_config>
"""


class Failure(Exception):
    """What was waited for did not come, or is not as it should be."""


def wait_until(condition, what, process=None, patience=PATIENCE_S, pause=0.01):
    """Polls until condition() is true, and returns its value."""
    deadline = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if process is not None and process.poll() is not None:
            raise Failure(f"the program ended with {process.returncode} while waiting for: {what}")
        if time.monotonic() > deadline:
            raise Failure(f"waited {patience} s for: {what}")
        time.sleep(pause)


class Picture:
    """Pixels of a rectangle of the screen: 4 bytes each (blue, green, red, unused), row by row."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    def __eq__(self, other):
        return (self.width, self.height, self.pixels) == (other.width, other.height, other.pixels)

    def at(self, x, y):
        start = (y * self.width + x) * 4
        return self.pixels[start:start + 3]

    def row(self, y, left=0, right=None):
        right = self.width if right is None else right
        return self.pixels[(y * self.width + left) * 4:(y * self.width + right) * 4]

    def crop(self, x, y, width, height):
        return Picture(width, height, b"".join(self.row(y + i, x, x + width) for i in range(height)))

    def save(self, path):
        rows = bytearray()
        for y in range(self.height):
            row = self.row(y)
            line = bytearray(self.width * 3)
            line[0::3], line[1::3], line[2::3] = row[2::4], row[1::4], row[0::4]
            rows += b"\0" + line

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n"
                       + chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0))
                       + chunk(b"IDAT", zlib.compress(bytes(rows), 6)) + chunk(b"IEND", b""))


class Desktop:
    """One X server with its window manager; ends both on close()."""

    def __init__(self, width=1280, height=900):
        self.folder = tempfile.mkdtemp(prefix="quorl-desktop-")
        self.children = []
        try:
            self._start_server(width, height)
            self._start_manager()
        except Exception:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _start_server(self, width, height):
        read_end, write_end = os.pipe()
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-fbdir", self.folder,
             "-nolisten", "tcp", "-dpi", "96", "-noreset", "-nocursor"],
            pass_fds=(write_end,), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.children.append(server)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb did not start")
        self.env = {name: value for name, value in os.environ.items()
                    if not name.startswith("QT_") and name not in ("WAYLAND_DISPLAY", "XAUTHORITY")}
        settings = os.path.join(self.folder, "config")
        self.env.update(DISPLAY=f":{number}", XDG_CONFIG_HOME=settings, LC_ALL="C.UTF-8", NO_AT_BRIDGE="1")
        os.makedirs(os.path.join(settings, "openbox"))
        with open(os.path.join(settings, "openbox", "rc.xml"), "w", encoding="ascii") as file:
            file.write(OPENBOX_SETTINGS)
        with open(os.path.join(self.folder, "Xvfb_screen0"), "rb") as file:
            self.buffer = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.buffer[:100])
        self.width, self.height, self.stride = header[4], header[5], header[12]
        self.start = header[0] + header[19] * 12
        if header[11] != 32:
            raise Failure(f"the frame buffer has {header[11]} bits a pixel")

    def _start_manager(self):
        # Windows that appear before it listens would stay unmanaged: it touches a file when it does.
        ready = os.path.join(self.folder, "ready")
        self.children.append(subprocess.Popen(["openbox", "--sm-disable", "--startup", f"touch {ready}"],
                                              env=self.env, stdin=subprocess.DEVNULL,
                                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        wait_until(lambda: os.path.exists(ready), "the window manager", self.children[-1])

    def close(self):
        for child in reversed(self.children):
            child.terminate()
        for child in self.children:
            try:
                child.wait(5)
            except subprocess.TimeoutExpired:
                child.kill()
        shutil.rmtree(self.folder, ignore_errors=True)

    def xdotool(self, *words, check=True):
        done = subprocess.run(["xdotool", *map(str, words)], env=self.env, capture_output=True, text=True,
                              check=False, timeout=PATIENCE_S)
        if check and done.returncode:
            raise Failure(f"xdotool {' '.join(map(str, words))}: {done.stderr.strip()}")
        return done.stdout

    def keys(self, *keys):
        """Presses keys, by xdotool's names, in the window that has the focus."""
        self.xdotool("key", "--clearmodifiers", "--delay", "2", *keys)

    def grab(self, x=0, y=0, width=None, height=None):
        width = self.width - x if width is None else width
        height = self.height - y if height is None else height
        first = self.start + y * self.stride + x * 4
        return Picture(width, height, b"".join(
            self.buffer[first + i * self.stride:first + i * self.stride + width * 4] for i in range(height)))


class Viewer:
    """The running program. Ended by close() if it did not end by itself."""

    def __init__(self, desktop, *words, cwd=None, env=None, stdin=subprocess.DEVNULL):
        self.desktop = desktop
        self.errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen([PROGRAM, *words], cwd=cwd, env=dict(desktop.env, **(env or {})),
                                        stdin=stdin, stdout=self.errors, stderr=self.errors)
        self.window = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        # The next viewer shall find an empty screen.
        wait_until(lambda: not self.windows(), "the windows to go")

    def messages(self):
        self.errors.seek(0)
        return self.errors.read().decode(errors="replace")

    def windows(self):
        """Ids of the program's visible windows."""
        listed = self.desktop.xdotool("search", "--all", "--onlyvisible", "--pid", self.process.pid, "--name", ".",
                                      check=False)
        return listed.split()

    def titles(self):
        return {window: self.desktop.xdotool("getwindowname", window, check=False).rstrip("\n")
                for window in self.windows()}

    def find(self, title):
        """Waits for a window of this title and makes it `self.window`; of several the one that was made first,
        as the program's own window and its boxes may have one title."""

        def found():
            return min((window for window, name in self.titles().items() if name == title), key=int, default=None)

        self.window = wait_until(found, f"a window named {title!r} (there are {self.titles()})", self.process)
        return self.window

    def focus(self):
        self.desktop.xdotool("windowactivate", "--sync", self.window)

    def size(self):
        lines = self.desktop.xdotool("getwindowgeometry", "--shell", self.window).split()
        values = dict(line.split("=") for line in lines)
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def resize(self, width, height):
        self.desktop.xdotool("windowsize", self.window, width, height)
        wait_until(lambda: self.size() == (width, height), f"the size {width}x{height}", self.process)

    def picture(self):
        return self.desktop.grab(0, 0, *self.size())

    def wait_end(self):
        """The exit status, once the program has ended."""
        wait_until(lambda: self.process.poll() is not None, "the program to end")
        return self.process.returncode

    def signal_end(self):
        self.process.send_signal(signal.SIGTERM)
