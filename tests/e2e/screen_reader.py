"""Reads the text that stands in the viewer's window back from its pixels.

The view's font has a fixed pitch, so the view is a grid of cells. The reader learns the grid and the picture
of each character from a calibration file whose text it knows, and then compares cells. What it cannot read is
U+FFFD, so a damaged character never reads as the right one.
"""
from desktop import Failure

UNREADABLE = "\ufffd"
# A full row of H makes the grid measurable; the rows above it hold every character that tests use.
FILLER_COLUMNS, FILLER_ROWS = 60, 200
CHARACTERS = "".join(map(chr, range(33, 127)))
CONTROL_MARK = "\u00b7"  # what control bytes look like


def calibration_file():
    rows = [CHARACTERS[:47], CHARACTERS[47:], "\x01\x02\x03"]
    return ("\n".join(rows + ["H" * FILLER_COLUMNS] * FILLER_ROWS) + "\n").encode("ascii")


def calibration_text():
    return [CHARACTERS[:47], CHARACTERS[47:], CONTROL_MARK * 3]


def smallest_period(same, low, high, what):
    for period in range(low, high):
        if same(period):
            return period
    raise Failure(f"cannot measure the {what}")


def invert(cell):
    """Each pixel is blue, green, red and a byte that is not used."""
    return bytes(byte if i % 4 == 3 else 255 - byte for i, byte in enumerate(cell))


class ScreenReader:
    """`left`, `top`: where the grid begins in the window; `cell_width`, `cell_height`: its pitch; `right`,
    `bottom`: where the scroll bars begin. All in pixels of the window."""

    # Text of a row stands one pixel right of the edge of the view.
    left = 1

    def __init__(self, picture):
        """`picture` shows the calibration file from its start, with at least 12 rows."""
        self._measure(picture)
        self.characters = {}
        for row, text in enumerate(calibration_text()):
            for column, character in enumerate(text):
                self.characters.setdefault(self._cell(picture, row, column), character)
        self.characters[self._cell(picture, 0, FILLER_COLUMNS)] = " "
        self.known = set(self.characters.values())
        if len(self.characters) < len(CHARACTERS) + 2:
            raise Failure("characters of the calibration file look alike")

    def _measure(self, picture):
        middle = picture.height // 2

        def rows_repeat(period):
            return all(picture.row(y, 1, 200) == picture.row(y + period, 1, 200)
                       for y in range(middle, middle + 2 * period))

        self.cell_height = smallest_period(rows_repeat, 5, 100, "height of a row")

        def columns_repeat(period):
            return all(picture.row(y, 20, 200) == picture.row(y, 20 + period, 200 + period)
                       for y in range(middle, middle + self.cell_height))

        self.cell_width = smallest_period(columns_repeat, 3, 60, "width of a column")
        # Right of all text the view shows its background alone, up to the menu bar.
        probe = self.left + (FILLER_COLUMNS + 2) * self.cell_width
        background = picture.at(probe, middle)
        top = middle
        while top > 0 and picture.at(probe, top - 1) == background:
            top -= 1
        self.top = top
        if top == 0 or (middle - top) // self.cell_height < 8:
            raise Failure("cannot find the first row")
        self.right, self.bottom = probe, middle
        while self.right < picture.width and picture.at(self.right, middle) == background:
            self.right += 1
        while self.bottom < picture.height and picture.at(probe, self.bottom) == background:
            self.bottom += 1
        self.columns = self.right // self.cell_width
        self.rows = (self.bottom - top) // self.cell_height

    def _cell(self, picture, row, column):
        """Pixels of a cell. Its first row of pixels is left out: rules are drawn there, and no character."""
        x, y = self.left + column * self.cell_width, self.top + row * self.cell_height
        return b"".join(picture.row(y + i, x, x + self.cell_width) for i in range(1, self.cell_height))

    def read_row(self, picture, row, columns, inverted=False):
        """One row, without blanks at its end, which may be drawn in the inverse of all colors."""
        cells = (self._cell(picture, row, column) for column in range(columns))
        return "".join(self.characters.get(invert(cell) if inverted else cell, UNREADABLE) for cell in cells).rstrip()

    def read(self, picture, rows=None):
        """The text of the first `rows` rows (all whole rows by default), without blanks at their ends."""
        return [self.read_row(picture, row, self.columns) for row in range(self.rows if rows is None else rows)]
