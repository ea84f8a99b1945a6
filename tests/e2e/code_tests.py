"""Files in UTF-8 and UTF-16 as their users have them: the code is found out and told, text goes out by the
clipboard and onto paper as it came in, and a pasted text is found.
"""
import subprocess

from desktop import wait_until
from printing_tests import Printing, check, text_of
from viewer_tests import clipboard, in_dialog, open_menu, press

LINES = ["Grüße aus Köln – 100 €", "Καλημέρα κόσμε", "Съешь же ещё этих мягких булок", "你好,世界 こんにちは", "e\u0301 a\u0308 คำ हिन्दी",
         "\U0001F600 and a flag \U0001F1E9\U0001F1EA", "┌─┐ ░▒▓"]
TEXT = "".join(f"{line}\n" for line in LINES * 3)
CODES = (("UTF-8", TEXT.encode()), ("UTF-16LE", TEXT.encode("utf-16-le")), ("UTF-16BE", b"\xfe\xff" + TEXT.encode("utf-16-be")))


def paste(viewer, text):
    subprocess.run(["xclip", "-i", "-selection", "clipboard"], input=text.encode(), env=viewer.desktop.env, check=True)
    press(viewer, "ctrl+v")


def expect_clipboard(viewer, text, what):
    wait_until(lambda: clipboard(viewer) == text, f"{what} on the clipboard, not {clipboard(viewer)[:80]!r}",
               viewer.process)


def copied_and_found(bench):
    for code, data in CODES:
        path = bench.write(f"{code}.txt", data)
        viewer = bench.show(path, title=f"Quorl - {code}.txt - {code}")
        open_menu(viewer, "alt+e")
        press(viewer, "s", "ctrl+c")
        expect_clipboard(viewer, TEXT, f"all of the {code} file but its byte order mark")
        in_dialog(viewer, "shift+F3", lambda: (paste(viewer, "ЕЩЁ ЭТИХ"), press(viewer, "Return")))
        press(viewer, "ctrl+c")
        expect_clipboard(viewer, "ещё этих мягких булок\n", f"what the hit begins in {code}")
        viewer.close()
        bench.viewers.remove(viewer)


def stepped_through(bench):
    path = bench.write("steps.txt", "Grüße\n".encode())
    viewer = bench.show(path, title="Quorl - steps.txt - UTF-8")
    for told in ("", "", "", " - UTF-8", " - UTF-16LE", " - UTF-16BE", " - UTF-8"):
        press(viewer, "ctrl+u")
        wait_until(lambda: viewer.titles()[viewer.window] == "Quorl - steps.txt" + told, f"the caption {told!r}, not {viewer.titles()}",
                   viewer.process)


def printed(bench):
    # What the machine need not have a face for is left out.
    lines = [LINES[0], LINES[1], LINES[2], LINES[6]]
    path = bench.write("paper.txt", "".join(f"{line}\n" for line in lines).encode())
    printing = Printing(bench, file=path, title="Quorl - paper.txt - UTF-8")
    printing.open_print()
    told = text_of(printing.to_file("paper.pdf"))
    check(told == lines, f"the lines on paper: {told}")


ALL_TESTS = [("codes-copied-found", copied_and_found), ("codes-steps", stepped_through), ("codes-printed", printed)]
