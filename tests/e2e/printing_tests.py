"""Printing from the viewer, by the keys of its dialogs: through a real print service and into PDF files. What
arrives is read with the tools for PDF and from the attributes of the job.
"""
import glob
import os
import re
import signal
import subprocess

import bus_tests
import desktop
import print_service
from desktop import wait_until
from viewer_tests import PLAIN_READING, drag, numbered

ROWS = 500


def check(condition, what):
    if not condition:
        raise desktop.Failure(what)


def text_of(path):
    """The lines of all pages, without what stands at the ends of lines and of pages."""
    told = subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True, text=True, check=True).stdout
    return [line.rstrip() for line in told.replace("\f", "\n").split("\n") if line.strip()]


def facts_of(path):
    told = subprocess.run(["pdfinfo", path], capture_output=True, text=True, check=True).stdout
    return dict(re.findall(r"^([^:\n]+): +(.*)$", told, re.MULTILINE))


class Printing:
    """A viewer on a file of numbered lines, and what it prints."""

    def __init__(self, bench, service=None, settings=(), file=None, bus=None, title=None):
        self.bench, self.service = bench, service
        if file is None:
            text = "".join(numbered(line) + "\n" for line in range(ROWS))
            file = bench.write("printed.txt", text.encode("ascii"))
        folder = os.path.join(bench.desktop.env["XDG_CONFIG_HOME"], "quorl")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "QUORL.INI"), "w", encoding="utf-8") as profile:
            # Headings would be the first line of each page.
            profile.write("[Page Setup]\nPrintOptions=0\n" + "".join(f"{line}\n" for line in settings) + PLAIN_READING)
        env = dict(bus.env if bus else bench.desktop.env)
        env["CUPS_SERVER"] = service.environment["CUPS_SERVER"] if service else "localhost:9"
        self.title = title or "Quorl - " + os.path.basename(file)
        self.viewer = bench.show(*(["-D"] if bus else []), file, env=env, title=self.title)

    def keys(self, *keys):
        self.bench.desktop.keys(*keys)

    def wait_title(self, title):
        """A window of that title has the keys."""
        wait_until(lambda: self.bench.desktop.xdotool("getwindowfocus", "getwindowname", check=False).strip() == title,
                   title, self.viewer.process)

    def wait_idle(self):
        """No dialog is left, and the window can be reached."""
        wait_until(lambda: len(self.viewer.titles()) == 1, "the end of the job", self.viewer.process)

    def wait_under_way(self, job=None):
        """The status dialog has the keys; the service knows of the job."""
        self.wait_title("Printing File")
        if job is not None:
            wait_until(lambda: self.service.job("kept", job), f"job {job}", self.viewer.process)

    def close_box(self):
        """Waits for a box of the program, which has the window's title, and closes it."""
        title = self.title
        wait_until(lambda: list(self.viewer.titles().values()) == [title, title], "a box", self.viewer.process)
        self.wait_title(title)
        self.keys("Return")
        self.wait_idle()

    def open_print(self):
        """Behind a job that was cancelled the window takes no keys until the service has been told."""
        def opened():
            self.keys("ctrl+shift+F12")
            return "Print" in self.viewer.titles().values()

        wait_until(opened, "the Print dialog", self.viewer.process, pause=0.2)
        self.wait_title("Print")

    def to_file(self, name, *keys):
        """Chooses the PDF file in the dialog, which has the keys pressed before OK."""
        path = self.bench.path(name)
        self.keys("alt+n", "End", *keys, "Return")
        self.name_file(path)
        return path

    def name_file(self, path):
        self.wait_title("Print to PDF File")
        self.bench.desktop.xdotool("type", path)
        self.keys("Return")
        wait_until(lambda: os.path.exists(path), path, self.viewer.process)
        self.wait_idle()

    def job(self, number, queue="kept"):
        job = self.service.ended_job(queue, number)
        check(job["job-state"] == "completed", f"job {number}: {job}")
        return job, self.service.path("kept", f"job-{number}.pdf")


def test_into_files(bench):
    printing = Printing(bench)
    everything = [numbered(line) for line in range(ROWS)]
    printing.open_print()
    whole = printing.to_file("whole.pdf")
    check(text_of(whole) == everything, "the whole file, line by line")
    pages = int(facts_of(whole)["Pages"])
    per_page = text_of(whole).index(everything[-1]) // (pages - 1)
    check(pages > 4 and "A4" in facts_of(whole)["Page size"], f"{facts_of(whole)}")

    # Pages n to m are the pages n to m of the whole.
    printing.open_print()
    part = printing.to_file("part.pdf", "alt+f", "2", "alt+t", "3")
    on_page = [subprocess.run(["pdftotext", "-layout", "-f", "2", "-l", "3", whole, "-"], capture_output=True,
                              text=True, check=True).stdout]
    check(subprocess.run(["pdftotext", "-layout", part, "-"], capture_output=True, text=True,
                         check=True).stdout == on_page[0], "pages 2 to 3")

    # From page 0 on: from the top of the view. Sideways.
    printing.keys("Next")
    printing.open_print()
    turned = printing.to_file("turned.pdf", "alt+f", "0", "alt+o", "Down")
    lines = text_of(turned)
    check(lines == everything[everything.index(lines[0]):] and lines[0] != everything[0], f"from {lines[0]}")
    width, height = re.match(r"([\d.]+) x ([\d.]+)", facts_of(turned)["Page size"]).groups()
    check(float(width) > float(height), f"landscape: {facts_of(turned)['Page size']}")

    # Print Page takes the printer that was chosen last, and is one page from the top of the view.
    printing.keys("ctrl+p")
    printing.name_file(bench.path("page.pdf"))
    check(facts_of(bench.path("page.pdf"))["Pages"] == "1", "one page")
    check(text_of(bench.path("page.pdf"))[0] == lines[0], "the page at the top of the view")

    # The file that is there stays when the question for its name is cancelled, and so does the view.
    before = os.stat(whole).st_mtime_ns
    printing.keys("ctrl+p")
    printing.wait_title("Print to PDF File")
    printing.keys("Escape")
    printing.wait_idle()
    check(os.stat(whole).st_mtime_ns == before, "no file is touched")
    check(per_page > 50, f"{per_page} lines a page")


def test_selection_and_tags(bench):
    reader = bench.reader()
    printing = Printing(bench)
    for _ in range(2):
        printing.keys("F11", "Down", "Down", "Down")
    printing.keys("ctrl+Home", "alt+f", "a")
    printing.wait_title("Print")
    tags = printing.to_file("tags.pdf")
    lines = text_of(tags)
    check(len(lines) == 2 and lines[0] == numbered(0) and lines[1] == numbered(3), f"tags: {lines}")
    everything = [numbered(line) for line in range(ROWS)]
    printing.keys("Home")
    for name, selected in (("rows.pdf", everything[2:6]), ("all.pdf", everything)):
        drag(printing.viewer, 100, *(reader.top + row * reader.cell_height + 4 for row in (2, 5)))
        printing.open_print()
        lines = text_of(printing.to_file(name, *([] if name == "rows.pdf" else ["alt+a"])))
        check(lines == selected, f"{name}: {lines[:8]}")


def test_through_the_service(bench):
    with print_service.PrintService() as service:
        printing = Printing(bench, service)
        printing.open_print()
        printing.keys("alt+c", "2", "alt+i", "Down", "Down", "alt+l", "Down", "Return")
        job, path = printing.job(1)
        printing.wait_idle()
        expected = {"copies": "2", "sides": "two-sided-long-edge", "media": "iso_a4_210x297mm",
                    "print-color-mode": "monochrome", "job-name": "printed.txt"}
        for name, value in expected.items():
            check(job.get(name) == value, f"{name} is {job.get(name)}")
        check("page-ranges" not in job, f"{job}")
        check(text_of(path) == [numbered(line) for line in range(ROWS)], "the whole file")

        # Print Page goes there without a question.
        printing.keys("ctrl+p")
        job, path = printing.job(2)
        printing.wait_idle()
        check(facts_of(path)["Pages"] == "1" and job.get("copies") == "2", f"{job}")

        # Pages are chosen by the program, not by the queue.
        printing.open_print()
        printing.keys("alt+f", "3", "alt+t", "4", "alt+o", "Down", "Return")
        job, path = printing.job(3)
        printing.wait_idle()
        check(facts_of(path)["Pages"] == "2" and "page-ranges" not in job, f"{job}")

        # What the profile asks for and the queue does not know is left out; a tray is named with the paper.
        printing.viewer.close()
        printing = Printing(bench, service, ["[Print Setup]", "PrtDevice=kept", "PrtDriver=cups", "PrtPaperSize=1",
                                             "PrtDefaultSource=4", "PrtDuplex=9", "PrtPrintQuality=77"])
        printing.keys("ctrl+p")
        job, path = printing.job(4)
        printing.wait_idle()
        with open(service.path("kept", "job-4.txt"), encoding="utf-8") as file:
            asked = file.read()
        check("InputSlot=Manual" in asked and "PageSize=Letter" in asked, f"asked: {asked}")
        check("sides" not in job and "printer-resolution" not in job, f"{job}")
        fonts = subprocess.run(["pdffonts", path], capture_output=True, text=True, check=True).stdout.splitlines()[2:]
        check(fonts and all(re.search(r" yes +yes +yes +\d+ +0$", font) for font in fonts), f"fonts: {fonts}")

        # The other queue hands its jobs on to a printer.
        printing.open_print()
        printing.keys("alt+n", "Down", "Return")
        wait_until(lambda: glob.glob(service.path("device", "*.pdf")), "the printer", printing.viewer.process)
        job = service.ended_job("device", 5)
        check(job["job-state"] == "completed", f"{job}")
        check(len(text_of(glob.glob(service.path("device", "*.pdf"))[0])) == ROWS, "what the printer got")


def test_given_up(bench):
    """A job that is cancelled in the middle leaves nothing, and the viewer is as before."""
    with print_service.PrintService() as service, bus_tests.Bus(bench) as bus:
        large = bench.path("large.txt")
        with open(large, "w", encoding="ascii") as file:
            for line in range(2000000):
                file.write(numbered(line) + "\n")
        printing = Printing(bench, service, file=large, bus=bus)
        printing.open_print()
        printing.keys("Return")
        printing.wait_under_way(1)
        # Other programs are told that they have to wait.
        for commands in ("[Display Hex]", "[Open printed.txt]", "[Print]", "[Setup \"Setup: x\"]", "[Exit]"):
            check(bus.send(commands) == 1, f"{commands} is refused")
        check(bus.send("[Window OnTop][Window OnTop]") == 0, "what concerns the window alone is done")
        printing.keys("Escape")
        printing.wait_idle()
        job = service.ended_job("kept", 1)
        check(job["job-state"] == "canceled", f"the job is cancelled: {job}")
        check(os.listdir(service.path("kept")) == [], "nothing was printed")

        # Into a file.
        printing.open_print()
        printing.keys("alt+n", "End", "Return")
        printing.wait_title("Print to PDF File")
        bench.desktop.xdotool("type", bench.path("given-up.pdf"))
        printing.keys("Return")
        printing.wait_under_way()
        printing.keys("Escape")
        printing.wait_idle()
        check(not os.path.exists(bench.path("given-up.pdf")), "no file is left")
        check(glob.glob(bench.path(".*")) == [], f"left behind: {os.listdir(bench.folder)}")

        # The service stops: while a job is begun, and in the middle of one.
        begun = 1
        for hang_first in (False, True):
            if hang_first:
                service.cupsd.send_signal(signal.SIGSTOP)
            printing.open_print()
            printing.keys("alt+n", "Home", "Return")
            begun += not hang_first
            printing.wait_under_way(None if hang_first else begun)
            service.cupsd.send_signal(signal.SIGSTOP)
            printing.keys("Escape")
            printing.wait_idle()
            service.cupsd.send_signal(signal.SIGCONT)
            begun += hang_first
        state = service.ended_job("kept", begun)["job-state"]
        check(state in ("canceled", "aborted") and os.listdir(service.path("kept")) == [], f"a stopped service: {state}")

        # The program ends in the middle of a job.
        printing.open_print()
        printing.keys("alt+n", "Home", "Return")
        printing.wait_under_way(begun + 1)
        printing.viewer.process.terminate()
        printing.viewer.wait_end()
        job = service.ended_job("kept", begun + 1)
        check(job["job-state"] == "canceled", f"the last job is cancelled: {job}")

        # The service dies.
        printing = Printing(bench, service, file=large)
        printing.keys("Home")
        printing.open_print()
        printing.keys("Return")
        printing.wait_under_way(begun + 2)
        service.cupsd.kill()
        printing.close_box()


def test_nothing_to_print_on(bench):
    """A queue that is gone, and a folder that may not be written: a box says why."""
    printing = Printing(bench, settings=["[Print Setup]", "PrtDevice=gone", "PrtDriver=cups", "PrtOutput=localhost",
                                         "PrtCopies=1"])
    printing.keys("ctrl+p")
    printing.close_box()
    printing.open_print()
    printing.keys("alt+n", "End", "Return")
    printing.wait_title("Print to PDF File")
    bench.desktop.xdotool("type", "/proc/no.pdf")
    printing.keys("Return")
    printing.close_box()
    printing.keys("ctrl+p")
    printing.name_file(bench.path("after.pdf"))


ALL_TESTS = [("printing-into-files", test_into_files), ("printing-selection-and-tags", test_selection_and_tags),
             ("printing-nothing-to-print-on", test_nothing_to_print_on)]
SERVICE_TESTS = [("printing-through-the-service", test_through_the_service), ("printing-given-up", test_given_up)]
