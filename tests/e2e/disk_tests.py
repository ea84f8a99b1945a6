"""End-to-end tests on disks that hang and fail, by the file system of tests/faultfs. While a read hangs, its
`pending` count is above 0: what the window does meanwhile it does without waiting for the disk."""
import os
import signal

import fault_fs
from desktop import wait_until
from viewer_tests import LINES, Bench, expect_picture, numbered, press

HANG = "delay read 30000"


class Disk:
    """A viewer on a numbered file of a disk that can be told to hang."""

    def __init__(self, bench):
        self.bench, self.fs = bench, fault_fs.FaultFs()

    def __enter__(self):
        self.fs.__enter__()
        text = "".join(numbered(line) + "\n" for line in range(LINES)).encode("ascii")
        self.path = self.fs.write("numbered.txt", text)
        self.bench.reader()
        self.viewer = self.bench.show(self.path)
        self.bench.expect_top(self.viewer, 0, "the first lines")
        return self

    def __exit__(self, *error):
        self.bench.close_viewers()
        self.fs.__exit__(*error)

    def hangs(self):
        return self.fs.counts()["pending"] > 0

    def hang_on(self, *keys):
        """Presses keys that need a read, which hangs; the window says so, and the old lines stay."""
        self.fs.command(HANG)
        before = self.viewer.picture()
        press(self.viewer, *keys)
        wait_until(self.hangs, "a read that hangs", self.viewer.process)
        noticed = wait_until(lambda: self.foot() != foot_of(before) and self.viewer.picture(), "a notice at the foot",
                             self.viewer.process)
        height = before.height - 60
        assert noticed.crop(0, 0, before.width - 20, height) == before.crop(0, 0, before.width - 20, height), \
            "the lines are not those of before"
        return before

    def foot(self):
        return foot_of(self.viewer.picture())

    def expect_still(self, line, column, what):
        """The screen shows these lines, from this column on, although the disk still hangs."""
        rows = self.bench.reader().rows - 2
        self.bench.expect_rows(self.viewer, [numbered(line + row)[column:] for row in range(rows)], what)
        assert self.hangs(), f"{what}: only when the disk had answered"


def foot_of(picture):
    return picture.crop(0, picture.height - 30, 300, 20)


def hanging_moves(bench: Bench):
    with Disk(bench) as disk:
        rows = bench.reader().rows
        # Keys are answered while the read hangs, and what was asked for comes when the disk does.
        disk.hang_on("End")
        press(disk.viewer, "Right", "Right")
        disk.expect_still(0, 2, "two columns to the right")
        press(disk.viewer, "Left", "Left", "Prior")
        disk.expect_still(0, 0, "back again")
        disk.fs.command("clear")
        bench.expect_top(disk.viewer, LINES - 1 - rows, "the end, and the page up that was asked for meanwhile")
        # Esc gives the wait up; the old screen stays, to the pixel, and the disk can be used again.
        press(disk.viewer, "Home")
        bench.expect_top(disk.viewer, 0, "the top")
        before = disk.hang_on("End")
        press(disk.viewer, "Escape")
        expect_picture(disk.viewer, before, "the old screen without the notice")
        assert disk.hangs(), "the read has ended by itself"
        disk.fs.command("clear")
        press(disk.viewer, "End")
        bench.expect_top(disk.viewer, LINES - 1, "the end, after a wait that was given up")


def hanging_commands(bench: Bench):
    with Disk(bench) as disk:
        # A search that hangs goes on when the disk does. The line of the hit is inverted: look at those below.
        press(disk.viewer, "shift+F3")
        disk.viewer.find("Find Text")
        disk.fs.command(HANG)
        press(disk.viewer, *"004321", "Return")
        disk.viewer.find("Quorl - numbered.txt - 0 %")
        press(disk.viewer, "Right")
        disk.expect_still(0, 1, "the old lines, a column to the right")
        press(disk.viewer, "Left", "Down")
        disk.fs.command("clear")
        bench.expect_top(disk.viewer, 4322, "the line below the hit")
        # The length is asked for before Go To opens.
        disk.fs.command("delay getattr 30000")
        press(disk.viewer, "F5")
        wait_until(disk.hangs, "a question that hangs", disk.viewer.process)
        press(disk.viewer, "Right")
        disk.expect_still(4322, 1, "a column to the right")
        press(disk.viewer, "Escape", "Left")
        disk.expect_still(4322, 0, "no dialog after Esc")
        disk.fs.command("clear")
        disk.hang_on("Home")
        # A window that grows shows the old lines; one that is minimized comes back with them.
        disk.viewer.resize(1000, 760)
        disk.expect_still(4322, 0, "the old lines in a larger window")
        disk.viewer.resize(1000, 700)
        disk.viewer.desktop.xdotool("windowminimize", disk.viewer.window)
        wait_until(lambda: not disk.viewer.windows(), "a minimized window", disk.viewer.process)
        disk.viewer.desktop.xdotool("windowmap", disk.viewer.window)
        disk.viewer.focus()
        disk.expect_still(4322, 0, "the old lines in the window that is back")
        disk.fs.command("clear")
        bench.expect_top(disk.viewer, 0, "the top, when the disk has answered")


def hanging_close(bench: Bench):
    for keys in (("alt+F4",), ("alt+f", "x")):
        with Disk(bench) as disk:
            disk.hang_on("End")
            press(disk.viewer, *keys)
            assert disk.viewer.wait_end() == 0, disk.viewer.messages()
            assert disk.viewer.messages() == "", disk.viewer.messages()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        bench.forget_settings()
        with Disk(bench) as disk:
            disk.hang_on("End")
            disk.viewer.process.send_signal(number)
            assert disk.viewer.wait_end() == 0, disk.viewer.messages()
            assert "numbered.txt" in bench.profile(), f"the recent files are saved at signal {number}"


def hanging_open(bench: Bench):
    with fault_fs.FaultFs() as fs:
        path = fs.write("slow.txt", b"slow but good\n")
        bench.reader()
        for what in ("open", "getattr", "read"):
            fs.command(f"delay {what} 30000")
            viewer = bench.start(path)
            viewer.find("Quorl")
            wait_until(lambda: fs.counts()["pending"] > 0, f"{what} that hangs", viewer.process)
            viewer.focus()
            press(viewer, "alt+h", "a")
            assert not [title for title in viewer.titles().values() if title == "About"], "a box over a wait"
            fs.command("clear")
            viewer.find("About Quorl")
            press(viewer, "Escape")
            viewer.find("Quorl - slow.txt")
            bench.close_viewers()


def failing_reads(bench: Bench):
    with Disk(bench) as disk:
        disk.fs.command(f"fail read {fault_fs.EIO}")
        before = disk.viewer.picture()
        press(disk.viewer, "End")
        wait_until(lambda: disk.foot() != foot_of(before), "the reason at the foot", disk.viewer.process)
        bench.expect_rows(disk.viewer, [numbered(row) for row in range(bench.reader().rows - 2)], "the old lines")
        # A search tells a failure from a key that is not there.
        press(disk.viewer, "shift+F3")
        disk.viewer.find("Find Text")
        press(disk.viewer, *"004321", "Return")
        disk.viewer.find("Find Error")
        press(disk.viewer, "Return")
        disk.fs.command("clear", "short 1000")
        disk.viewer.find("Quorl - numbered.txt")
        press(disk.viewer, "F3")
        press(disk.viewer, "Down")
        bench.expect_top(disk.viewer, 4322, "the line below the hit of a search by reads of 1000 bytes")
        disk.fs.command("clear")
        os.truncate(os.path.join(disk.fs.folder, "numbered.txt"), 100 * (len(numbered(0)) + 1))
        press(disk.viewer, "End")
        bench.expect_rows(disk.viewer, [numbered(99)], "the last line of what is left")


ALL_TESTS = [(test.__name__, test) for test in (
    hanging_moves, hanging_commands, hanging_close, hanging_open, failing_reads)]
