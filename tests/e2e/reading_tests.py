"""What is beside the view as it is on the first day: the status line, the hits that are lit, the usual keys."""
import os

from desktop import wait_until
from viewer_tests import PLAIN_READING, dialog_of, numbered, point_at, press, type_text

HIT = (0x00, 0xA5, 0xFF)  # blue, green, red
OTHER_HIT = (0xA0, 0xF0, 0xFF)


def first_day(bench):
    os.remove(os.path.join(bench.desktop.env["XDG_CONFIG_HOME"], "quorl", "QUORL.INI"))
    return bench.show(bench.write("read.txt", "".join(numbered(line) + "\n" for line in range(500)).encode("ascii")))


def count(picture, color):
    pixels = picture.pixels
    return sum(pixels[i:i + 3] == bytes(color) for i in range(0, len(pixels), 4))


def click_last_field(viewer):
    width, height = viewer.size()
    point_at(viewer, width - 20, height - 8)
    viewer.desktop.xdotool("click", "1")


def status_and_hits(bench):
    viewer = first_day(bench)
    # The last field is the size, and opens Go To, as Ctrl+G does.
    for ask in (lambda: click_last_field(viewer), lambda: press(viewer, "ctrl+g")):
        ask()
        dialog = dialog_of(viewer)
        press(viewer, "Escape")
        wait_until(lambda shown=dialog: shown not in viewer.windows(), "Go To to close", viewer.process)
        viewer.focus()
    assert count(viewer.picture(), HIT) == 0
    press(viewer, "ctrl+f")
    dialog = dialog_of(viewer)
    type_text(viewer, "fox")
    press(viewer, "Return")
    wait_until(lambda: dialog not in viewer.windows(), "the dialog to close", viewer.process)
    # A hit has about 300 pixels of background, and the screen a hit a row.
    wait_until(lambda: 100 < count(viewer.picture(), HIT) < 600, "one hit lit as the selected one", viewer.process)
    wait_until(lambda: count(viewer.picture(), OTHER_HIT) > 4000, "the others lit faintly", viewer.process)
    press(viewer, "Next")
    wait_until(lambda: count(viewer.picture(), HIT) == 0 and count(viewer.picture(), OTHER_HIT) > 4000,
               "the hits of the next screen", viewer.process)
    with_line = viewer.picture().row(viewer.size()[1] - 4)
    press(viewer, "alt+v", "s")
    wait_until(lambda: viewer.picture().row(viewer.size()[1] - 4) != with_line, "the line to go", viewer.process)
    press(viewer, "ctrl+q")
    viewer.wait_end()


def turned_off(bench):
    """Without both the same search lights nothing."""
    assert PLAIN_READING in bench.profile()
    viewer = bench.show("+/fox", bench.write("read.txt", (numbered(1) + "\n").encode("ascii") * 100))
    press(viewer, "F3", "F3", "Next")
    bench.expect_rows(viewer, [numbered(1)] * 10, "the lines")
    assert count(viewer.picture(), HIT) + count(viewer.picture(), OTHER_HIT) == 0


ALL_TESTS = [("status-and-hits", status_and_hits), ("reading-turned-off", turned_off)]
