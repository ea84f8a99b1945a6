"""Settings that are chosen, saved and loaded in dialogs, and the help book, by real keys."""
import html.parser
import os
import time

import desktop
from desktop import wait_until
from viewer_tests import dialog_of, press, type_text

LONG = "a line that is far longer than the window is wide, so that it shows at once whether lines wrap " * 3


class Settings:
    """A viewer, and what the user does in its dialogs."""

    def __init__(self, bench, *words):
        self.bench = bench
        bench.write("long.txt", (LONG + "\n").encode("ascii"))
        self.viewer = bench.show(*words, "long.txt", cwd=bench.folder)

    def has_focus(self, title):
        return self.bench.desktop.xdotool("getwindowfocus", "getwindowname", check=False).strip() == title

    def wait_title(self, title):
        wait_until(lambda: self.has_focus(title), f"the keys to go to {title!r}", self.viewer.process)

    def turn_to(self, title):
        """Activates the viewer, again where a window that has just come up takes the keys once more."""

        def turned():
            if self.has_focus(title):
                return True
            self.viewer.focus()
            time.sleep(0.1)
            return False

        wait_until(turned, f"the keys to go to {title!r}", self.viewer.process)

    def open(self, title, *keys):
        press(self.viewer, *keys)
        self.wait_title(title)

    def press(self, *keys):
        press(self.viewer, *keys)

    def end(self, *keys):
        """The last keys in a dialog, after which the viewer has them again."""
        press(self.viewer, *keys)
        self.wait_title("Quorl - long.txt")

    def expect(self, beginnings, what):
        """The first rows begin so."""
        reader = self.bench.reader()
        wait_until(lambda: [row[:len(text)] for row, text in
                            zip(reader.read(self.viewer.picture(), len(beginnings)), beginnings)] == beginnings,
                   what, self.viewer.process)

    def expect_wrapped(self, what):
        reader = self.bench.reader()

        def is_wrapped():
            first, second = reader.read(self.viewer.picture(), 2)
            return first[:20] == LONG[:20] and second.strip() != "" and second.strip() in LONG

        wait_until(is_wrapped, what, self.viewer.process)

    def close(self):
        self.viewer.signal_end()
        self.viewer.wait_end()
        self.viewer.close()


def display_formatting(bench):
    first = Settings(bench)
    unwrapped = [LONG[:20], ""]
    first.expect(unwrapped, "the line as it is")
    first.open("Display Formatting", "ctrl+o")
    first.press("alt+w")
    first.end("Escape")
    first.expect(unwrapped, "the line after Cancel")
    # A refused field keeps the dialog, and has the focus.
    first.open("Display Formatting", "ctrl+o")
    first.press("alt+w", "alt+t")
    type_text(first.viewer, "999")
    first.open("Bad Options", "Return")
    first.open("Display Formatting", "Return")
    first.press("alt+t")
    type_text(first.viewer, "4")
    first.end("Return")
    first.expect_wrapped("the line wrapped")
    # The font holds at once, also after Cancel.
    size = bench.reader().cell_height
    first.open("Display Formatting", "ctrl+o")
    first.press("alt+n")
    wait_until(lambda: not first.has_focus("Display Formatting"), "the font dialog", first.viewer.process)
    first.press("Escape")
    first.wait_title("Display Formatting")
    first.end("alt+s")
    profile = bench.profile()
    assert "TabLength=4" in profile and "Options0=545" in profile and "LineLength=127" in profile, profile
    assert size == bench.reader().cell_height
    first.close()
    again = Settings(bench)
    again.expect_wrapped("the line wrapped after a restart")


def setups(bench):
    one = Settings(bench)
    one.press("ctrl+w")
    one.expect_wrapped("the line wrapped")
    one.open("Save Setup As...", "alt+o", "v")
    type_text(one.viewer, "wrapping & more")
    one.press("alt+s")  # to the name again
    one.end("Return")
    one.press("ctrl+w", "ctrl+h")
    one.expect(["000000"], "a hex dump")
    one.open("Save Setup As...", "alt+o", "v")
    one.press("Tab", "space", "Tab", "space", "Tab", "space")  # colors alone
    one.press("alt+s")
    type_text(one.viewer, "colors")
    one.end("Return")
    assert "[Setup: colors]\nSaveOptions=768" in bench.profile(), bench.profile()
    assert "Setup2=colors" in bench.profile(), bench.profile()

    other = Settings(bench)
    other.expect([LONG[:20]], "the line in another viewer")
    other.open("Load Setup...", "alt+o", "d")
    other.press("Down", "Down")
    other.end("Return")
    other.expect_wrapped("the setup of the first viewer")
    other.press("ctrl+h")
    other.open("Load Setup...", "alt+o", "d")
    other.press("Up")
    other.end("Return")
    other.expect(["000000"], "colors alone leave the format as it is")
    other.close()

    for letter in "vV":
        named = Settings(bench, f"-{letter}wrapping & more")
        named.expect_wrapped(f"the setup named with {letter}")
        assert named.viewer.messages() == "", named.viewer.messages()
        named.close()
    lettered = Settings(bench, "-vwrapping & more", "-H")
    lettered.expect(["000000"], "a letter wins over the setup")
    lettered.close()
    unknown = Settings(bench, "-vnobody")
    assert 'there is no setup "nobody" in ' in unknown.viewer.messages(), unknown.viewer.messages()
    unknown.open("Load Setup...", "alt+o", "d")
    unknown.press("Down")
    unknown.open("Quorl", "alt+r")
    unknown.press("Return")  # the question begins with its Cancel
    unknown.wait_title("Load Setup...")
    assert "Setup2" in bench.profile(), "the question was answered with no"
    unknown.open("Quorl", "alt+r")
    unknown.press("Left", "Return")
    unknown.wait_title("Load Setup...")
    unknown.end("Escape")
    assert "Setup1=wrapping & more\n" in bench.profile() and "colors" not in bench.profile(), bench.profile()


class Links(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.ids, self.links = set(), []
        with open(path, encoding="utf-8") as file:
            self.feed(file.read())

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if "id" in attributes:
            self.ids.add(attributes["id"])
        if "href" in attributes:
            self.links.append(attributes["href"])


def help_links(bench):
    """Every link of the book leads somewhere, and the first page leads to every other."""
    folder = os.path.join(desktop.BUILD, "bin", "help", "html")
    pages = {name: Links(os.path.join(folder, name)) for name in os.listdir(folder) if name.endswith(".html")}
    assert len(pages) > 20, sorted(pages)
    for name, page in pages.items():
        for link in page.links:
            target, _, anchor = link.partition("#")
            assert (target or name) in pages, f"{name}: {link}"
            assert not anchor or anchor in pages[target or name].ids, f"{name}: {link}"
    reached, ahead = set(), ["contents.html"]
    while ahead:
        name = ahead.pop()
        if name not in reached:
            reached.add(name)
            ahead += [link.partition("#")[0] for link in pages[name].links if not link.startswith("#")]
    assert reached == set(pages), set(pages) - reached


def help_book(bench):
    settings = Settings(bench)
    viewer = settings.viewer

    def expect_page(title):
        settings.wait_title(title + " - Quorl Help")

    for keys, title in ((["F1"], "Keys and mouse"), (["ctrl+F1"], "Quorl Help"), (["alt+h", "h"], "Help on help")):
        press(viewer, *keys)
        expect_page(title)
        settings.turn_to("Quorl - long.txt")  # it stays beside the viewer
    # Found by a word, in a window that a dialog does not hold up.
    for keys, dialog, title in ((["ctrl+o"], "Display Formatting", "Display Formatting"),
                                (["alt+o", "l"], "Color Selection", "Color Selection"),
                                (["alt+o", "a"], "Save Options", "Save Options"),
                                (["alt+m", "e"], "Freeze Columns", "Freeze Columns"),
                                (["alt+f", "t"], "Page Setup", "Page Setup and Print Shade Selection")):
        settings.open(dialog, *keys)
        press(viewer, "F1")
        expect_page(title)
        press(viewer, "Escape")
        settings.wait_title(dialog)
        press(viewer, "alt+h")
        expect_page(title)
        press(viewer, "alt+i")
        time.sleep(0.1)
        type_text(viewer, "TabLength")
        press(viewer, "Return")
        expect_page("Settings")
        press(viewer, "Escape")
        settings.wait_title(dialog)
        settings.end("Escape")
    press(viewer, "F1")
    expect_page("Keys and mouse")
    settings.close()
    assert viewer.messages() == "", viewer.messages()


ALL_TESTS = [("display-formatting", display_formatting), ("setups", setups), ("help-links", help_links),
             ("help-book", help_book)]
