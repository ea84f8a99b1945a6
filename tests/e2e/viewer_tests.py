"""The end-to-end tests. Each is a function of the Bench; what it sees on the screen it compares with what the
file holds at that place, or with the screen of another moment. Nothing is timed: a test waits until the screen
shows what it should, and fails when patience ends."""
import os
import shutil
import signal
import subprocess
import time
import urllib.parse

import desktop
from desktop import Failure, Viewer, wait_until
from screen_reader import ScreenReader, calibration_file, calibration_text

WINDOW = (1000, 700)
LINES = 5000


def numbered(line):
    return f"{line:06d} the quick brown fox jumps over the lazy dog"


# Turns off what is beside the view.
PLAIN_READING = "[Quorl Reading]\nStatusLine=0\nLightHits=0\n"


class Bench:
    """What the tests share: the desktop, a folder for files, and the reader, made at first use."""

    def __init__(self, screen, folder):
        self.desktop, self.folder = screen, folder
        self.viewers = []
        self._reader = None
        self.forget_settings()

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

    def forget_settings(self):
        """The next viewer starts as on its first day, but for what is beside the view."""
        folder = os.path.join(self.desktop.env["XDG_CONFIG_HOME"], "quorl")
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        with open(os.path.join(folder, "QUORL.INI"), "w", encoding="ascii") as profile:
            profile.write(PLAIN_READING)

    def profile(self):
        with open(os.path.join(self.desktop.env["XDG_CONFIG_HOME"], "quorl", "QUORL.INI"), encoding="utf-8") as file:
            return file.read()

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


def lines_and_pages(bench):
    reader = bench.reader()
    assert reader.rows >= 20 and reader.columns >= 80, "the view is too small for these tests"
    bench.numbered_file()
    viewer = bench.show("numbered.txt", cwd=bench.folder)
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


def huge_file(bench):
    """64 GB, nearly all of it holes, with text at its start, in its middle, and at its end."""
    path = bench.path("huge.bin")
    with open(path, "wb") as file:
        file.write("".join(f"start {line}\n" for line in range(200)).encode("ascii"))
        file.seek(HUGE // 2 - (MIDDLE_MIB << 19))
        for part in range(MIDDLE_MIB):
            file.write((middle_line(part) + "\n").encode("ascii") * (1 << 15))
        tail = "\n" + "".join(f"end {line}\n" for line in range(200))
        file.seek(HUGE - len(tail))
        file.write(tail.encode("ascii"))
    return path


def drag(viewer, x, from_y, to_y):
    point_at(viewer, x, from_y)
    viewer.desktop.xdotool("mousedown", "1")
    for step in range(1, 6):
        point_at(viewer, x, from_y + (to_y - from_y) * step // 5)
    viewer.desktop.xdotool("mouseup", "1")


def huge_thumb(bench):
    """The thumb reaches a place of 64 GB to a pixel of the bar, and the text there can be read."""
    reader = bench.reader()
    viewer = bench.show(huge_file(bench))
    starts = [f"start {line}" for line in range(reader.rows)]
    bench.expect_rows(viewer, starts, "the start")
    press(viewer, "End")
    bench.expect_rows(viewer, ["end 199"], "the end")
    press(viewer, "Prior")
    bench.expect_rows(viewer, [f"end {line}" for line in range(199 - reader.rows, 199)], "a page above the end")
    press(viewer, "Home")
    bench.expect_rows(viewer, starts, "the start again")
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
    viewer.desktop.keys("Escape", "Escape", "Escape")
    time.sleep(0.2)
    assert viewer.windows(), "Esc behind a menu minimized the window"
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
    """What cannot be opened is told, then the Open dialog comes up; giving up there ends the program."""
    os.makedirs(bench.path("folder"), exist_ok=True)
    if not os.path.exists(bench.path("pipe")):
        os.mkfifo(bench.path("pipe"))
    for words in ([bench.path("no such file")], [bench.path("folder")], [bench.path("pipe")], ["/dev/tty"], []):
        viewer = bench.start(*words, cwd=bench.folder)
        viewer.find("Quorl")
        box = dialog_of(viewer)
        if words:  # it says why
            press(viewer, "Escape")
            wait_until(lambda: dialog_of(viewer) != box, "the Open dialog", viewer.process)
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
    # A name that is no UTF-8 stands in a list of its own.
    with open(os.path.join(os.fsencode(bench.folder), b"B\xfccher"), "wb") as file:
        file.write(b"of an older system\n")
    press(viewer, "ctrl+F12")
    dialog_of(viewer)
    viewer.desktop.xdotool("type", "--delay", "2", bench.folder + "/")
    press(viewer, "Return")
    time.sleep(0.4)  # until a thread has found it
    press(viewer, "alt+u")
    press(viewer, "Down")
    press(viewer, "Return")
    bench.expect_rows(viewer, ["of an older system"], "the file with the strange name")


def font_dialog(bench):
    viewer = bench.show(bench.numbered_file())
    first = bench.expect_top(viewer, 0, "the first lines")
    open_menu(viewer, "alt+o")
    press(viewer, "f")
    dialog_of(viewer)
    press(viewer, "Escape")
    viewer.find("Quorl - numbered.txt")
    expect_picture(viewer, first, "the view as it was")


def scale(bench):
    """The desktop is scaled while the viewer runs: the window and its font follow."""
    settings = os.path.join(bench.folder, "xsettings")

    def scale_to(dots):
        with open(settings, "w", encoding="ascii") as file:
            file.write(f"Xft/DPI {dots * 1024}\n")

    scale_to(96)
    manager = subprocess.Popen(["xsettingsd", "-c", settings], env=bench.desktop.env, stderr=subprocess.DEVNULL)
    try:
        viewer = bench.show(bench.write("lines.txt", b"=" * 20 + b"\n"))
        width = viewer.size()[0]
        bench.expect_rows(viewer, ["=" * 20], "the line")
        scale_to(144)
        manager.send_signal(signal.SIGHUP)
        wait_until(lambda: viewer.size()[0] > width * 1.4, "a window of the new scale", viewer.process)
    finally:
        manager.terminate()
        manager.wait()


def clipboard(viewer):
    """What another program gets when it pastes."""
    done = subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=viewer.desktop.env, capture_output=True,
                          check=False, timeout=desktop.PATIENCE_S)
    return done.stdout.decode()


def row_center(reader, row):
    return reader.top + row * reader.cell_height + reader.cell_height // 2


def select_and_copy(bench):
    """A selection dragged with the mouse, copied in each format."""
    reader = bench.reader()
    path = bench.write("copied.txt", "".join(numbered(line) + "\r\n" for line in range(LINES)).encode("ascii"))
    viewer = bench.show(path)
    for key, count in (("ctrl+t", 3), ("ctrl+h", 3), ("ctrl+r", 2)):
        press(viewer, key)
        wait_until(lambda: reader.read(viewer.picture(), 1)[0] != "", f"the format of {key}", viewer.process)
        press(viewer, "Home")
        plain = viewer.picture()
        rows = reader.read(plain, count + 1)
        drag(viewer, 200, row_center(reader, 1), row_center(reader, count))
        wait_until(lambda: viewer.picture() != plain, "inverted rows", viewer.process)
        press(viewer, "ctrl+c")
        wait_until(lambda: [line.rstrip() for line in clipboard(viewer).splitlines()] == rows[1:],
                   f"rows 1 to {count} on the clipboard after {key}, not {clipboard(viewer)!r}", viewer.process)
        viewer.desktop.xdotool("click", "3")
        expect_picture(viewer, plain, "the view without the selection")


def tags(bench):
    """A line tagged by a double click is found again in another format."""
    reader = bench.reader()
    viewer = bench.show(bench.numbered_file())
    bench.expect_top(viewer, 0, "the first lines")
    plain = viewer.picture()
    point_at(viewer, 200, row_center(reader, 5))
    viewer.desktop.xdotool("click", "--repeat", "2", "--delay", "40", "1")
    wait_until(lambda: viewer.picture() != plain, "the tagged line", viewer.process)
    point_at(viewer, 200, 5)
    press(viewer, "End", "ctrl+h", "Home", "F2")
    below = (5 * (len(numbered(0)) + 1) // 32 + 1) * 32  # the tagged row itself has colors of its own
    wait_until(lambda: reader.read(viewer.picture(), 2)[1].startswith(f"{below:06X}"),
               "the tagged bytes on top", viewer.process)
    press(viewer, "ctrl+t", "Home", "F2")
    wait_until(lambda: reader.read(viewer.picture(), 2)[1] == numbered(6), "the tagged line on top", viewer.process)
    press(viewer, "ctrl+shift+F2")
    bench.expect_top(viewer, 5, "the line without its tag")


def recent_files(bench):
    """Recent files open by their access keys, and are there again at the next start."""
    first, second = bench.write("first.txt", b"this is first\n"), bench.write("second.txt", b"this is second\n")
    viewer = bench.show(first)
    press(viewer, "alt+F4")
    viewer.wait_end()
    viewer = bench.show(second)
    bench.expect_rows(viewer, ["this is second"], "the second file")
    open_menu(viewer, "alt+f")
    press(viewer, "2")
    viewer.find("Quorl - first.txt")
    bench.expect_rows(viewer, ["this is first"], "the file of the former start")
    press(viewer, "ctrl+F12")
    dialog_of(viewer)
    press(viewer, "Escape")
    viewer.find("Quorl - first.txt")
    open_menu(viewer, "alt+f")
    press(viewer, "c")
    viewer.find("Quorl")
    open_menu(viewer, "alt+f")
    press(viewer, "1")
    viewer.find("Quorl - first.txt")


def drop(bench):
    """A file dragged from another program opens, also one whose name is no UTF-8."""
    viewer = bench.show(bench.numbered_file())
    bench.expect_top(viewer, 0, "the first lines")
    path = os.path.join(os.fsencode(bench.folder), b"dropped & 100 % \xe9.txt")
    with open(path, "wb") as file:
        file.write(b"this was dropped\n")
    uri = "file://" + urllib.parse.quote(path)
    source = subprocess.Popen([os.path.join(desktop.BUILD, "bin", "drag_source"), uri, bench.path("other")],
                              env=viewer.desktop.env, stdin=subprocess.DEVNULL)
    try:
        xdotool = viewer.desktop.xdotool
        window = wait_until(lambda: xdotool("search", "--onlyvisible", "--name", "drag source", check=False).strip(),
                            "the program to drag from", source)
        xdotool("windowactivate", "--sync", window)
        drag(viewer, 60, 30, 500)
        bench.expect_rows(viewer, ["this was dropped"], "the file that was dropped")
    finally:
        source.kill()
        source.wait()
    with open(path, "rb") as file:
        assert file.read() == b"this was dropped\n", "the file was moved or changed by the drop"


def colors(bench):
    """A color chosen in the dialogs shows at once, and after a change of mind no more."""
    viewer = bench.show(bench.numbered_file())
    plain = bench.expect_top(viewer, 0, "the first lines")
    corner = (bench.reader().right - 2, bench.reader().bottom - 2)
    for button, changed in (("Escape", False), ("Return", True)):
        open_menu(viewer, "alt+o")
        press(viewer, "l")
        dialog = dialog_of(viewer)
        press(viewer, "Down")  # Text background
        press(viewer, "alt+c")
        picker = wait_until(lambda: next((window for window in viewer.windows()
                                          if window not in (viewer.window, dialog)), None),
                            "the system's color dialog", viewer.process)
        viewer.desktop.xdotool("windowactivate", "--sync", picker)
        press(viewer, "alt+h", "ctrl+a")
        viewer.desktop.xdotool("type", "--delay", "2", "#ccff99")
        press(viewer, "Tab", "Return")
        wait_until(lambda: picker not in viewer.windows(), "the color dialog to close", viewer.process)
        viewer.desktop.xdotool("windowactivate", "--sync", dialog)
        press(viewer, button)
        wait_until(lambda: dialog not in viewer.windows(), "the dialog to close", viewer.process)
        if changed:
            wait_until(lambda: viewer.picture().at(*corner) == b"\x99\xff\xcc", "the new background", viewer.process)
        else:
            expect_picture(viewer, plain, "the view as it was")


def type_text(viewer, text):
    viewer.desktop.xdotool("type", "--delay", "2", text)


def in_dialog(viewer, key, action):
    """Opens the dialog of a key, and waits for it to be gone after the action."""
    press(viewer, key)
    dialog = dialog_of(viewer)
    action()
    wait_until(lambda: dialog not in viewer.windows(), f"the dialog of {key} to close", viewer.process)
    viewer.focus()


def find_text(bench):
    reader = bench.reader()
    viewer = bench.show(bench.write("find.txt", ("".join(numbered(line) + "\n" for line in range(LINES))
                                                 .replace("004000 the quick", "004000 The Quick")).encode("ascii")))
    bench.expect_rows(viewer, [numbered(0)], "the first line")

    def expect_hit(line, what):
        """The hit is on top, inverted, and the line below it is not."""
        wait_until(lambda: reader.read(viewer.picture(), 2)[1] == numbered(line + 1), what, viewer.process)
        inverted = viewer.picture().at(reader.right - 3, reader.top + 3)
        assert inverted == b"\0\0\0", f"the row of the hit is not inverted: {inverted}"

    def search(text):
        type_text(viewer, text)
        press(viewer, "Return")

    in_dialog(viewer, "shift+F3", lambda: search("2500 THE"))
    expect_hit(2500, "the first hit of a search without regard to case")
    in_dialog(viewer, "shift+F3", lambda: search("4000 the"))
    expect_hit(4000, "the hit of another search")
    hit = viewer.picture()
    press(viewer, "F3")
    wait_until(lambda: viewer.picture() != hit, "the selection to go when there is no further hit", viewer.process)
    press(viewer, "Home", "F3")
    expect_hit(4000, "the hit again, from the top")
    press(viewer, "Home")
    bench.expect_top(viewer, 0, "the first lines")

    def mark_all():
        type_text(viewer, "7 the")
        press(viewer, "alt+m")

    in_dialog(viewer, "shift+F3", mark_all)
    point_at(viewer, 300, 300)
    viewer.desktop.xdotool("click", "3")  # F2 would go on from the selection
    press(viewer, "Home")
    for line in (7, 17, 27):
        press(viewer, "F2")
        wait_until(lambda: reader.read(viewer.picture(), 2)[1] == numbered(line + 1), f"the tag at line {line}",
                   viewer.process)
    press(viewer, "alt+F4")
    viewer.wait_end()
    # The list of former searches is there at the next start; its first entry is chosen already.
    viewer = bench.show(bench.path("find.txt"))
    in_dialog(viewer, "shift+F3", lambda: press(viewer, "Down", "Return"))
    expect_hit(4000, "the hit of the search before the last one")


def find_hex(bench):
    reader = bench.reader()
    viewer = bench.show(bench.numbered_file())
    bench.expect_top(viewer, 0, "the first lines")

    def search():
        type_text(viewer, "30 31x")
        shown = viewer.desktop.grab()
        press(viewer, "Return")  # refused
        assert len(viewer.windows()) == 2, "a wrong digit was accepted"
        press(viewer, "End", "BackSpace")
        wait_until(lambda: viewer.desktop.grab() != shown, "the error line to go", viewer.process)
        type_text(viewer, "3030 20")
        press(viewer, "Return")

    in_dialog(viewer, "ctrl+F3", search)
    wait_until(lambda: reader.read(viewer.picture(), 2)[1] == numbered(101), "the line with the bytes 30 31 30 30 20",
               viewer.process)


def go_to(bench):
    reader = bench.reader()
    path = bench.write("pages.txt", "\f".join(f"page {page + 1}\n" + "text\n" * 50 for page in range(3000)).encode())
    viewer = bench.show(path)
    bench.expect_rows(viewer, ["page 1", "text"], "the first page")
    with open(path, "rb") as file:
        data = file.read()

    def position(text):
        press(viewer, "alt+b")
        type_text(viewer, text)
        press(viewer, "Return")

    for key in ("ctrl+h", "ctrl+r", "ctrl+t"):
        press(viewer, key)
        in_dialog(viewer, "F5", lambda: position("0x1234"))
        start = data.rfind(b"\n", 0, 0x1234) + 1
        expected = {"ctrl+h": "001234", "ctrl+r": data[0x1234:0x123c].decode().replace("\n", "\u00b7"),
                    "ctrl+t": data[start:].split(b"\n", 1)[0].strip(b"\f").decode()}[key]
        wait_until(lambda: reader.read(viewer.picture(), 1)[0].startswith(expected), f"byte 0x1234 after {key}",
                   viewer.process)

    def page():
        press(viewer, "alt+p")
        type_text(viewer, "20")
        press(viewer, "Return")

    in_dialog(viewer, "F5", page)  # the index is built while these tests run
    bench.expect_rows(viewer, ["page 20", "text"], "the twentieth page")


# Where the twelfth character of the ruler ends, from the corner of the dialog.
BEHIND_TWELVE_IN_RULER = (102, 116)


def titles_and_columns(bench):
    reader = bench.reader()
    head = ["Article      Stock", "name         place", "-" * 60]
    lines = [f"{line:04d} article {'x' * (line % 30)}|" for line in range(500)]
    path = bench.write("table.txt", "\n".join(head + lines).encode("ascii"))
    viewer = bench.show(path)
    bench.expect_rows(viewer, head + lines[:3], "the table")

    def expect_table(first, what, shift=0):
        def same():
            seen = reader.read(viewer.picture(), 8)
            return seen[3:] == [line[shift:] for line in lines[first:first + 5]]

        wait_until(same, what, viewer.process)

    drag(viewer, 300, row_center(reader, 0), row_center(reader, 2))
    open_menu(viewer, "alt+m")
    press(viewer, "f")
    press(viewer, "Down", "Down", "Down")
    expect_table(0, "the table below its titles")
    press(viewer, "Next")
    expect_table(reader.rows - 3, "a page further, below the titles")
    open_menu(viewer, "alt+o")
    press(viewer, "a")
    dialog = dialog_of(viewer)
    press(viewer, "Return")
    wait_until(lambda: dialog not in viewer.windows(), "the dialog to close", viewer.process)
    viewer.focus()
    press(viewer, "alt+F4")
    viewer.wait_end()

    viewer = bench.show(path)
    wait_until(lambda: reader.read(viewer.picture(), 4)[3] == head[0], "the titles of the former start above the file",
               viewer.process)
    titled = viewer.picture()
    open_menu(viewer, "alt+m")
    press(viewer, "e")
    dialog = dialog_of(viewer)
    viewer.desktop.xdotool("mousemove", "--window", dialog, *BEHIND_TWELVE_IN_RULER, "click", "1")
    press(viewer, "Return")
    wait_until(lambda: dialog not in viewer.windows(), "the dialog to close", viewer.process)
    wait_until(lambda: viewer.picture() != titled, "the frozen columns", viewer.process)
    viewer.focus()
    frozen = viewer.picture()
    press(viewer, "ctrl+Right")
    wait_until(lambda: viewer.picture() != frozen, "a step to the right", viewer.process)
    width = 12 * reader.cell_width
    assert viewer.picture().crop(0, reader.top, width, 300) == frozen.crop(0, reader.top, width, 300), \
        "twelve columns stay while the rest moves"
    open_menu(viewer, "alt+m")
    press(viewer, "c")
    open_menu(viewer, "alt+m")
    press(viewer, "a")
    press(viewer, "ctrl+Home")
    bench.expect_rows(viewer, head + lines[:3], "the file without titles and frozen columns")


def search_ended(bench):
    """Esc ends a search of 64 GB, and leaves all as it was."""
    viewer = bench.show(huge_file(bench))
    bench.expect_rows(viewer, ["start 0", "start 1"], "the start")
    plain = viewer.picture()

    def search():
        type_text(viewer, "nowhere")
        press(viewer, "Return")

    in_dialog(viewer, "shift+F3", search)
    wait_until(lambda: any(name.endswith(" %") for name in viewer.titles().values()), "the caption to count",
               viewer.process)
    press(viewer, "Escape")
    viewer.find("Quorl - huge.bin")
    expect_picture(viewer, plain, "the view as it was")


def no_display(bench):
    env = {name: value for name, value in bench.desktop.env.items() if name != "DISPLAY"}
    for display in (None, ":4711"):
        done = subprocess.run([desktop.PROGRAM, bench.numbered_file()], stdin=subprocess.DEVNULL,
                              env=env if display is None else dict(env, DISPLAY=display), capture_output=True,
                              text=True, check=False, timeout=desktop.PATIENCE_S)
        assert done.returncode == 254, f"exit status {done.returncode} with DISPLAY {display}: {done.stderr}"
        assert done.stderr.count("\n") == 1 and done.stderr.strip(), f"not one line: {done.stderr!r}"


def places_and_input(bench):
    """What the command line asks to be shown, and standard input as a file."""
    bench.numbered_file()
    half = f"numbered.txt:{os.path.getsize(bench.path('numbered.txt')) // 2}"
    for words in (["--at", "50%", "numbered.txt"], [half]):
        viewer = bench.show(*words, title="Quorl - numbered.txt", cwd=bench.folder)
        bench.expect_top(viewer, LINES // 2, "the middle of the file")
        viewer.close()
    viewer = bench.show("+/" + numbered(123), "numbered.txt", cwd=bench.folder)
    time.sleep(0.2)
    press(viewer, "Down")
    bench.expect_top(viewer, 124, "the line below it")
    viewer.signal_end()
    viewer.wait_end()
    for words, status in ((["--at", "nowhere", "x"], 2), (["--nosuch"], 2), (["--version"], 0)):
        viewer = bench.start(*words)
        assert viewer.wait_end() == status and "quorl" in viewer.messages(), words
    reading, writing = os.pipe()
    os.write(writing, b"first\nsecond\n")
    viewer = bench.show("-", title="Quorl - (standard input)", stdin=reading)
    bench.expect_rows(viewer, ["first", "second"], "what has come so far")
    os.write(writing, b"third\n")
    os.close(writing)
    time.sleep(0.2)
    press(viewer, "ctrl+t")
    bench.expect_rows(viewer, ["first", "second", "third"], "what came later")
    viewer.signal_end()
    viewer.wait_end()
    assert "File1" in bench.profile() and "/proc/" not in bench.profile(), bench.profile()


ALL_TESTS = [(test.__name__, test) for test in (
    lines_and_pages, sideways, formats, zoom, wheel, huge_thumb, unusual_names, menu, ways_to_end, not_found, open_dialog, font_dialog, select_and_copy, tags,
    recent_files, drop, colors, find_text, find_hex, go_to, titles_and_columns, search_ended, scale, no_display,
    places_and_input)]
