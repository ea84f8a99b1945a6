"""The recorded sessions of tests/sessions in a real window: what keys and mouse do there must give the rows that
are recorded. A session is played up to its first step that is not made of keys and clicks."""
import glob
import os
import re
import shlex
import subprocess

import desktop
from desktop import Failure, wait_until
from viewer_tests import PLAIN_READING, WINDOW, Bench, dialog_of, drag, point_at, press, row_center, type_text

SESSIONS = os.path.join(desktop.ROOT, "tests", "sessions")
DRIVER = os.path.join(desktop.BUILD, "bin", "sessions_driver")
KEYS = {"PageUp": "Prior", "PageDown": "Next", "Esc": "Escape", "Enter": "Return", "Backspace": "BackSpace",
        "Space": "space"}
LEAST_COLUMNS = 30  # a narrower window has no room for its menu bar
BARS = "[Quorl]\nVertScroll=1\nHorzScroll=0\n"  # so that the window's size tells the view's


def names_of(keys):
    """The keys of a session by the names that xdotool knows."""
    for key in keys.split(","):
        name, _, count = key.partition("*")
        *modifiers, last = name.split("+")
        last = KEYS.get(last, last.lower() if len(last) == 1 else last)
        yield from ["+".join([modifier.lower() for modifier in modifiers] + [last])] * int(count or 1)


class Player:
    def __init__(self, bench: Bench, session, folder):
        self.bench, self.reader, self.folder = bench, bench.reader(), folder
        made = subprocess.run([DRIVER, "--make", session, folder], check=True, capture_output=True, text=True)
        self.grid, *words = made.stdout.splitlines()
        self.put_profile()
        self.viewer = bench.start(*words, cwd=folder)
        self.viewer.find("Quorl - " + words[-1])
        self.viewer.focus()
        self.resize(self.grid)

    def put_profile(self):
        profile = BARS
        path = os.path.join(self.folder, "quorl", "QUORL.INI")
        if os.path.exists(path):
            with open(path, encoding="utf-8") as file:
                own = file.read()
            profile = own.replace("[Quorl]\n", BARS, 1) if "[Quorl]\n" in own else BARS + own
        if "[Quorl Reading]" not in profile:
            profile += PLAIN_READING
        path = os.path.join(self.bench.desktop.env["XDG_CONFIG_HOME"], "quorl", "QUORL.INI")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(profile)

    def resize(self, grid):
        self.columns, rows = map(int, grid.split("x"))
        reader = self.reader
        self.viewer.resize(self.columns * reader.cell_width + 1 + WINDOW[0] - reader.right,
                           rows * reader.cell_height + reader.top + WINDOW[1] - reader.bottom)

    def dialog(self, rest):
        opener, *words = shlex.split(rest, posix=False)
        press(self.viewer, *names_of(opener))
        dialog = dialog_of(self.viewer)
        for word in words:
            if word.startswith('"'):
                type_text(self.viewer, word[1:-1])
            else:
                press(self.viewer, *names_of(word))
        wait_until(lambda: dialog not in self.viewer.windows(), f"the dialog of {rest} to close", self.viewer.process)
        self.viewer.focus()

    def can(self, verb, rest, seen):
        """Boxes are answered by nobody here."""
        known = verb in ("keys", "screen", "resize", "index", "drag", "click", "right-click") or \
            (verb == "dialog" and not rest[0].isdigit())
        return known and not any(line.startswith("box ") for line in seen)

    def play(self, verb, rest, seen):
        viewer = self.viewer
        if verb == "keys":
            press(viewer, *names_of(rest))
        elif verb == "dialog":
            self.dialog(rest)
        elif verb == "resize":
            self.resize(rest)
        elif verb == "drag":
            drag(viewer, 20, *(row_center(self.reader, int(row)) for row in rest.split()))
        elif verb in ("click", "right-click"):
            point_at(viewer, 20, row_center(self.reader, int(rest)))
            viewer.desktop.xdotool("click", "1" if verb == "click" else "3")
        elif verb == "screen":
            self.expect([line for line in seen if not line.startswith("[")])

    def expect(self, rows):
        """Waits for rows of the usual colors, selected or not, to read as recorded."""
        wanted = [(row, line[0] == "*", line[4:]) for row, line in enumerate(rows) if line[1] == " "]
        seen = []

        def right():
            picture = self.viewer.picture()
            seen[:] = [self.reader.read_row(picture, row, self.columns, inverted) for row, inverted, _ in wanted]
            return all(self.same(line, text) for line, (_, _, text) in zip(seen, wanted))

        try:
            wait_until(right, "the rows recorded", self.viewer.process, patience=8)
        except Failure as failure:
            differences = [(row, line, text) for line, (row, _, text) in zip(seen, wanted) if not self.same(line, text)]
            raise Failure(f"{failure}: row, seen, recorded: {differences[:1]}") from None

    def same(self, seen, recorded):
        """The reader knows no characters but those of ASCII, and the mark of control bytes."""
        known = self.reader.known
        text, *note = re.split(r" \[|\u00bb", recorded, maxsplit=1)
        seen = seen[:len(text)] if note else seen  # what stands behind has colors of its own
        seen, recorded = seen.ljust(len(text)), text.ljust(len(seen))
        return all(one == other or other not in known for one, other in zip(seen, recorded))


def steps_of(session):
    """(verb, rest, what is seen then) of each step."""
    steps = []
    with open(session, encoding="utf-8") as file:
        for line in file.read().splitlines():
            if line.startswith("> "):
                verb, _, rest = line[2:].partition(" ")
                steps.append((verb, rest, []))
            elif steps and line and not line.startswith("#"):
                steps[-1][2].append(line)
    return steps


def play(bench, session):
    folder = bench.path(os.path.basename(session) + ".files")
    os.makedirs(folder)
    player = Player(bench, session, folder)
    for verb, rest, seen in steps_of(session):
        if not player.can(verb, rest, seen):
            break
        try:
            player.play(verb, rest, seen)
        except Failure as failure:
            raise Failure(f"{os.path.basename(session)}: {verb} {rest}: {failure}") from None
    bench.close_viewers()
    bench.forget_settings()


def columns_of(session):
    with open(session, encoding="utf-8") as file:
        return int(file.read().split("\nsize ")[1].split("x")[0])


def sessions(bench):
    bench.reader()
    for session in sorted(glob.glob(os.path.join(SESSIONS, "*.session"))):
        if "\nshow -D" not in open(session, encoding="utf-8").read() and columns_of(session) >= LEAST_COLUMNS \
                and "there" not in session:
            play(bench, session)


ALL_TESTS = [("sessions", sessions)]
