"""The end-to-end tests. Each is a function of the Bench; what it sees on the screen it compares with what the
file holds at that place, or with the screen of another moment. Nothing is timed: a test waits until the screen
shows what it should, and fails when patience ends."""
import os
import subprocess

import desktop
from desktop import Failure, Viewer, wait_until
from screen_reader import ScreenReader, calibration_file, calibration_text

WINDOW = (1000, 700)
LINES = 5000


def numbered(line):
    return f"{line:06d} the quick brown fox jumps over the lazy dog"


class Bench:
    """What the tests share: the desktop, a folder for files, and the reader, made at first use."""

    def __init__(self, screen, folder):
        self.desktop, self.folder = screen, folder
        self.viewers = []
        self._reader = None

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, data):
        with open(self.path(name), "wb") as file:
            file.write(data)
        return self.path(name)

    def numbered_file(self):
        text = "".join(numbered(line) + "\n" for line in range(LINES))
        return self.write("numbered.txt", text.encode("ascii"))

    def start(self, *words, **options):
        viewer = Viewer(self.desktop, *words, **options)
        self.viewers.append(viewer)
        return viewer

    def show(self, *words, title=None, **options):
        """Starts the viewer, and waits for its window to be there in the size of all tests."""
        viewer = self.start(*words, **options)
        viewer.find(title or "Quorl - " + os.path.basename(words[-1]))
        viewer.focus()
        viewer.resize(*WINDOW)
        return viewer

    def close_viewers(self):
        while self.viewers:
            self.viewers.pop().close()

    def reader(self):
        if self._reader is None:
            viewer = self.show(self.write("calibration.txt", calibration_file()))

            def learn():
                try:
                    picture = viewer.picture()
                    reader = ScreenReader(picture)
                except Failure:
                    return None  # not drawn yet
                drawn = reader.right > WINDOW[0] - 40 and reader.bottom > WINDOW[1] - 40
                return reader if drawn and reader.read(picture, 3) == calibration_text() else None

            self._reader = wait_until(learn, "a calibration screen that can be read", viewer.process)
            self.viewers.remove(viewer)
            viewer.close()
        return self._reader

    def expect_rows(self, viewer, expected, what):
        """Waits until the first rows of the screen read as expected, and returns the picture."""
        reader = self.reader()
        seen = []

        def matches():
            picture = viewer.picture()
            seen[:] = reader.read(picture, len(expected))
            return picture if seen == expected else None

        try:
            return wait_until(matches, what, viewer.process)
        except Failure as failure:
            difference = next(((row, pair) for row, pair in enumerate(zip(seen, expected)) if pair[0] != pair[1]),
                              None)
            raise Failure(f"{failure}; first difference (row, (seen, expected)): {difference}") from None

    def expect_top(self, viewer, line, what):
        """A whole screen of the numbered file from this line on."""
        rows = min(self.reader().rows, LINES - line)
        return self.expect_rows(viewer, [numbered(line + row) for row in range(rows)], what)


def expect_picture(viewer, picture, what):
    wait_until(lambda: viewer.picture() == picture, what, viewer.process)


def press(viewer, *keys):
    viewer.desktop.keys(*keys)


def first_screen(bench):
    reader = bench.reader()
    path = bench.numbered_file()
    viewer = bench.show(path)
    bench.expect_top(viewer, 0, "the first lines")
    assert reader.rows >= 20 and reader.columns >= 80, "the view is too small for these tests"


def relative_name(bench):
    bench.numbered_file()
    viewer = bench.show("numbered.txt", cwd=bench.folder)
    bench.expect_top(viewer, 0, "the file of the current folder")


def lines_and_pages(bench):
    reader = bench.reader()
    viewer = bench.show(bench.numbered_file())
    first = bench.expect_top(viewer, 0, "the first lines")
    press(viewer, "Down", "Down", "Down")
    bench.expect_top(viewer, 3, "three lines down")
    press(viewer, "Up", "Up", "Up", "Up")
    bench.expect_top(viewer, 0, "back at the top, which stops the last step")
    press(viewer, *["Next"] * 40)
    bench.expect_top(viewer, 40 * reader.rows, "40 pages down")
    press(viewer, "Prior")
    bench.expect_top(viewer, 39 * reader.rows, "a page up")
    press(viewer, "End")
    bench.expect_top(viewer, LINES - 1, "the last line on top")
    press(viewer, "Next", "Down", "Up")
    bench.expect_top(viewer, LINES - 2, "the end, which stops a page and a line, and a line up")
    press(viewer, "Home")
    expect_picture(viewer, first, "the first screen, every pixel of it")


def sideways(bench):
    reader = bench.reader()
    lines = ["".join(f"<{line:03d}.{column:04d}>" for column in range(100)) for line in range(60)]
    viewer = bench.show(bench.write("wide.txt", "\n".join(lines).encode("ascii")))

    def expect_offset(offset, what):
        bench.expect_rows(viewer, [line[offset:offset + reader.columns] for line in lines[:reader.rows]], what)

    width = (reader.cell_width + reader.right) * 3 // reader.cell_width
    large_step = reader.right // (3 * reader.cell_width)
    bench.expect_rows(viewer, [line[:reader.columns] for line in lines[:reader.rows]], "the left end")
    press(viewer, "Right", "Right", "Right", "Left")
    expect_offset(2, "two columns to the right")
    press(viewer, "ctrl+Right")
    expect_offset(2 + large_step, "a third of a screen further")
    press(viewer, "ctrl+Left", "ctrl+Left")
    expect_offset(0, "the left end, which stops the step")
    press(viewer, "ctrl+End")
    offset = width - reader.right // reader.cell_width
    bench.expect_rows(viewer, [line[offset:width] for line in lines[:5]], "the right end of what is formatted")
    press(viewer, "ctrl+Home")
    expect_offset(0, "the left end")


def hex_rows(data, start, group_count, rows):
    text = []
    for position in range(start, start + rows * 4 * group_count, 4 * group_count):
        row = data[position:position + 4 * group_count]
        groups = " ".join(row[i:i + 4].hex().upper() for i in range(0, len(row), 4))
        text.append(f"{position:06X}  {groups}  {row.decode('ascii')}".rstrip())
    return text


def formats(bench):
    reader = bench.reader()
    lines = [numbered(line) for line in range(LINES)]
    data = "".join(line + "!" for line in lines).encode("ascii")  # no line break: all bytes can be read
    viewer = bench.show(bench.write("formats.txt", data))
    press(viewer, "ctrl+h")
    groups = max(n for n in (1, 2, 4, 8, 16) if 13 * n + 9 <= reader.columns)
    bench.expect_rows(viewer, hex_rows(data, 0, groups, reader.rows), "the bytes in hexadecimal")
    press(viewer, "ctrl+r")
    text = data.decode("ascii")
    width = reader.columns  # this format wraps
    bench.expect_rows(viewer, [text[row * width:][:width].rstrip() for row in range(10)], "raw text")
    press(viewer, "ctrl+t")
    bench.expect_rows(viewer, [text[:reader.columns]], "text again")


def wrap(bench):
    reader = bench.reader()
    text = "".join(f"<{column:04d}>" for column in range(300))
    file = text + "\n" + "second line\n" * 100
    viewer = bench.show(bench.write("wrap.txt", file.encode("ascii")))
    bench.expect_rows(viewer, [text[:reader.columns], "second line"], "a long line in one row")
    press(viewer, "ctrl+w")
    rows = [text[i:i + reader.columns] for i in range(0, 1800, reader.columns)] + ["second line"]
    bench.expect_rows(viewer, rows[:reader.rows], "a long line in rows of the view's width")
    press(viewer, "ctrl+w")
    bench.expect_rows(viewer, [text[:reader.columns], "second line"], "one row again")


def cell_height(picture):
    try:
        return ScreenReader(picture).cell_height
    except Failure:
        return 0


def zoom(bench):
    normal = bench.reader().cell_height
    viewer = bench.show(bench.write("zoom.txt", calibration_file()))
    first = bench.expect_rows(viewer, calibration_text(), "the first screen")
    press(viewer, "ctrl+shift+z")
    wait_until(lambda: cell_height(viewer.picture()) > normal, "larger rows", viewer.process)
    press(viewer, "ctrl+z", "ctrl+z")
    wait_until(lambda: 0 < cell_height(viewer.picture()) < normal, "smaller rows", viewer.process)
    press(viewer, "ctrl+alt+z")
    expect_picture(viewer, first, "the first screen, every pixel of it")


def point_at(viewer, x, y):
    viewer.desktop.xdotool("mousemove", x, y)


def wheel(bench):
    normal = bench.reader().cell_height
    viewer = bench.show(bench.numbered_file())
    first = bench.expect_top(viewer, 0, "the first lines")
    point_at(viewer, 300, 300)
    xdotool = viewer.desktop.xdotool
    xdotool("click", "5")
    bench.expect_top(viewer, 3, "three lines down")
    xdotool("click", "--repeat", "2", "--delay", "10", "5")
    bench.expect_top(viewer, 9, "nine lines down")
    xdotool("click", "--repeat", "4", "--delay", "10", "4")
    bench.expect_top(viewer, 0, "back at the top")
    xdotool("keydown", "shift", "click", "5", "keyup", "shift")
    wait_until(lambda: bench.reader().read(viewer.picture(), 1)[0] in [numbered(0)[i:] for i in range(1, 8)],
               "some columns to the right", viewer.process)
    xdotool("keydown", "shift", "click", "4", "keyup", "shift")
    expect_picture(viewer, first, "the left end")
    xdotool("keydown", "ctrl", "click", "4", "keyup", "ctrl")
    wait_until(lambda: viewer.picture().row(bench.reader().top + normal - 1, 1, 300) !=
               first.row(bench.reader().top + normal - 1, 1, 300), "zoomed rows", viewer.process)
    xdotool("keydown", "ctrl", "click", "5", "keyup", "ctrl")
    expect_picture(viewer, first, "the first size")


HUGE = 64 << 30


# Text in the middle: as wide as two pixels of the scroll bar, so that a drag can hit it. Each line names the
# MiB that it lies in, counted from the middle's start.
MIDDLE_MIB = 256


def middle_line(part):
    return f"part {part:03d} of the middle".ljust(31)


def huge_file(bench, with_middle=False):
    """64 GB, nearly all of it holes, with text at its start and end, and in its middle if wanted."""
    path = bench.path("huge.bin")
    with open(path, "wb") as file:
        file.write("".join(f"start {line}\n" for line in range(200)).encode("ascii"))
        if with_middle:
            file.seek(HUGE // 2 - (MIDDLE_MIB << 19))
            for part in range(MIDDLE_MIB):
                file.write((middle_line(part) + "\n").encode("ascii") * (1 << 15))
        tail = "\n" + "".join(f"end {line}\n" for line in range(200))
        file.seek(HUGE - len(tail))
        file.write(tail.encode("ascii"))
    return path


def huge_jumps(bench):
    reader = bench.reader()
    viewer = bench.show(huge_file(bench))
    starts = [f"start {line}" for line in range(reader.rows)]
    bench.expect_rows(viewer, starts, "the start")
    press(viewer, "End")
    bench.expect_rows(viewer, ["end 199"], "the end")
    press(viewer, "Prior")
    bench.expect_rows(viewer, [f"end {line}" for line in range(199 - reader.rows, 200)][:reader.rows],
                      "a page above the end")
    press(viewer, "Home")
    bench.expect_rows(viewer, starts, "the start again")


def drag(viewer, x, from_y, to_y):
    point_at(viewer, x, from_y)
    viewer.desktop.xdotool("mousedown", "1")
    for step in range(1, 6):
        point_at(viewer, x, from_y + (to_y - from_y) * step // 5)
    viewer.desktop.xdotool("mouseup", "1")


def huge_thumb(bench):
    """The thumb reaches a place of 64 GB to a pixel of the bar, and the text there can be read."""
    reader = bench.reader()
    viewer = bench.show(huge_file(bench, with_middle=True))
    bench.expect_rows(viewer, ["start 0", "start 1"], "the start")
    x = (reader.right + WINDOW[0]) // 2
    button = WINDOW[0] - reader.right  # the arrow buttons of the bar are square
    thumb, middle = reader.top + button + button // 2, (reader.top + reader.bottom) // 2
    names = [middle_line(part).rstrip() for part in range(MIDDLE_MIB)]

    def middle_shown():
        return reader.read(viewer.picture(), 2)[1] in names

    # Which pixel is the middle depends on the height of the thumb: the drag is made anew for each.
    for distance in sorted(range(-30, 30), key=lambda pixels: abs(pixels + 7)):
        drag(viewer, x, thumb, middle + distance)
        try:
            wait_until(middle_shown, "the middle", viewer.process, patience=0.3)
            break
        except Failure:
            press(viewer, "Home")
            bench.expect_rows(viewer, ["start 0", "start 1"], "the start again")
    rows = reader.read(viewer.picture())
    assert rows[1] in names, f"the thumb never met the middle of the file: {rows[:3]}"
    assert all(row in names for row in rows[1:]), f"not all rows are of the middle: {rows}"
    press(viewer, "Home")
    bench.expect_rows(viewer, ["start 0", "start 1"], "the start")


def growing_file(bench):
    path = bench.numbered_file()
    viewer = bench.show(path)
    bench.expect_top(viewer, 0, "the first lines")
    with open(path, "ab") as file:
        file.write("".join(f"more {line}\n" for line in range(2000)).encode("ascii"))
    press(viewer, "End", "Home", "End")
    bench.expect_rows(viewer, ["more 1999"], "the line that was added last")


def unusual_names(bench):
    for name in ("two  blanks.txt", "Pr\u00fcfbericht \u4e2d\u6587.txt", "x" * 240 + ".txt", "%s & 100%.txt"):
        viewer = bench.show(bench.write(name, b"content of it\n" * 100))
        bench.expect_rows(viewer, ["content of it"], f"the content of {name!r}")
        bench.close_viewers()


def open_menu(viewer, key):
    closed = viewer.picture()
    press(viewer, key)
    wait_until(lambda: viewer.picture() != closed, f"the menu of {key}", viewer.process)


def menu(bench):
    viewer = bench.show(bench.numbered_file())
    bench.expect_top(viewer, 0, "the first lines")
    open_menu(viewer, "alt+v")
    press(viewer, "h")
    wait_until(lambda: bench.reader().read(viewer.picture(), 1)[0].startswith("000000  30303030"),
               "Hex by the menu", viewer.process)
    open_menu(viewer, "alt+f")
    press(viewer, "x")
    assert viewer.wait_end() == 0, "exit status of File, Exit"


def ways_to_end(bench):
    path = bench.numbered_file()
    viewer = bench.show(path)
    press(viewer, "alt+F4")
    assert viewer.wait_end() == 0, "exit status after Alt+F4"
    viewer = bench.show("-Y", path)
    press(viewer, "Escape")
    assert viewer.wait_end() == 0, "exit status after Esc with -Y"
    viewer = bench.show(path)
    press(viewer, "Escape")
    wait_until(lambda: not viewer.windows(), "the window to be minimized by Esc", viewer.process)
    viewer.focus()
    bench.expect_top(viewer, 0, "the file after the window came back")


def dialog_of(viewer):
    """Waits for a second window, the dialog, to be shown and active; its id."""

    def shown():
        others = [window for window in viewer.windows() if window != viewer.window]
        active = viewer.desktop.xdotool("getactivewindow", check=False).strip()
        return active if active in others else None

    return wait_until(shown, "a dialog", viewer.process)


def not_found(bench):
    """Whatever cannot be opened as a file brings up the Open dialog; giving up there ends the program."""
    os.makedirs(bench.path("folder"), exist_ok=True)
    if not os.path.exists(bench.path("pipe")):
        os.mkfifo(bench.path("pipe"))
    for words in ([bench.path("no such file")], [bench.path("folder")], [bench.path("pipe")], ["/dev/tty"], []):
        viewer = bench.start(*words, cwd=bench.folder)
        viewer.find("Quorl")
        dialog_of(viewer)
        press(viewer, "Escape")
        assert viewer.wait_end() == 0, f"exit status after giving up on {words}"
        bench.close_viewers()


def open_dialog(bench):
    viewer = bench.show(bench.write("one.txt", b"this is one\n"))
    bench.expect_rows(viewer, ["this is one"], "the first file")
    bench.write("other file.txt", b"this is the other\n")
    press(viewer, "ctrl+F12")
    dialog_of(viewer)
    viewer.desktop.xdotool("type", "--delay", "2", bench.path("other file.txt"))
    press(viewer, "Return")
    viewer.find("Quorl - other file.txt")
    bench.expect_rows(viewer, ["this is the other"], "the file that was chosen")


def font_dialog(bench):
    viewer = bench.show(bench.numbered_file())
    first = bench.expect_top(viewer, 0, "the first lines")
    open_menu(viewer, "alt+o")
    press(viewer, "f")
    dialog_of(viewer)
    press(viewer, "Escape")
    viewer.find("Quorl - numbered.txt")
    expect_picture(viewer, first, "the view as it was")


def no_display(bench):
    env = {name: value for name, value in bench.desktop.env.items() if name != "DISPLAY"}
    for display in (None, ":4711"):
        done = subprocess.run([desktop.PROGRAM, bench.numbered_file()], stdin=subprocess.DEVNULL,
                              env=env if display is None else dict(env, DISPLAY=display), capture_output=True,
                              text=True, check=False, timeout=desktop.PATIENCE_S)
        assert done.returncode == 254, f"exit status {done.returncode} with DISPLAY {display}: {done.stderr}"
        assert done.stderr.count("\n") == 1 and done.stderr.strip(), f"not one line: {done.stderr!r}"


ALL_TESTS = [(test.__name__, test) for test in (
    first_screen, relative_name, lines_and_pages, sideways, formats, wrap, zoom, wheel, huge_jumps, huge_thumb,
    growing_file, unusual_names, menu, ways_to_end, not_found, open_dialog, font_dialog, no_display)]
