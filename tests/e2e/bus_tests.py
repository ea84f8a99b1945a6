"""Commands from other programs over a session bus of the test's own: by stock clients, and by the viewer's own."""
import os
import shutil
import subprocess

import desktop
from desktop import wait_until
from viewer_tests import dialog_of, numbered, press

NAME, PATH = "org.quorl.Quorl", "/org/quorl/Quorl"


def unavailable():
    missing = [tool for tool in ("dbus-daemon", "gdbus", "dbus-send", "dbus-monitor") if shutil.which(tool) is None]
    return f"{', '.join(missing)} not found" if missing else ""


class Bus:
    def __init__(self, bench, data=None):
        """`data` is a folder in which the bus looks for services that it can start."""
        self.bench = bench
        own = dict(bench.desktop.env, XDG_DATA_DIRS=data) if data else None
        self.daemon = subprocess.Popen(["dbus-daemon", "--session", "--print-address=1", "--nofork", "--nopidfile"],
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, env=own)
        self.env = dict(bench.desktop.env, DBUS_SESSION_BUS_ADDRESS=self.daemon.stdout.readline().strip())

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.daemon.kill()
        self.daemon.wait()
        self.daemon.stdout.close()

    def show(self, *words):
        viewer = self.bench.show("-D", *words, cwd=self.bench.folder, env=self.env)
        wait_until(lambda: self.run("--list").returncode == 0, "the viewer to serve", viewer.process)
        return viewer

    def run(self, *words, program=desktop.PROGRAM, text=None):
        return subprocess.run([program, *words], env=self.env, input=text, capture_output=True, text=True, timeout=60)

    def send(self, commands, *words):
        return self.run(*words, "--send", commands).returncode

    def gdbus(self, member, *arguments):
        return self.run("call", "--session", "--dest", NAME, "--object-path", PATH, "--method", member, *arguments,
                        program="gdbus")

    def property(self, name):
        return self.gdbus("org.freedesktop.DBus.Properties.Get", "org.quorl.Viewer", name).stdout.strip()


def stock_clients(bench):
    bench.numbered_file()
    other = bench.write("of ümläuts %20.txt", b"the other file\n")
    with Bus(bench) as bus:
        viewer = bus.show("numbered.txt")
        bench.expect_top(viewer, 0, "the first lines")
        watcher = subprocess.Popen(["dbus-monitor", "--session", "interface='org.freedesktop.DBus.Properties'"],
                                   env=bus.env, stdout=subprocess.PIPE, text=True)
        described = bus.run("introspect", "--session", "--dest", NAME, "--object-path", PATH, program="gdbus").stdout
        for member in ("Execute(in  s commands)", "ActivateAction(", "readonly x Position"):
            assert member in described, described
        assert bus.gdbus("org.quorl.Viewer.GoTo", "50%").stdout.split()[-1].strip("(,)\n").isdigit()
        bench.expect_top(viewer, 2500, "the middle of the file")
        found = bus.gdbus("org.quorl.Viewer.Find", numbered(700), "['Top', 'Case']")
        assert found.stdout.strip() == f"(int64 {700 * (len(numbered(0)) + 1)},)", found
        assert bus.gdbus("org.quorl.Viewer.Copy").stdout.strip() == f"('{numbered(700)}\\n',)"
        rows = bus.gdbus("org.quorl.Viewer.Rows").stdout
        assert rows.startswith(f"(['{numbered(700)}', '{numbered(701)}', "), rows
        assert "Error.NotFound" in bus.gdbus("org.quorl.Viewer.Find", "nowhere", "[]").stderr
        assert "Error.BadKey" in bus.gdbus("org.quorl.Viewer.Find", "0G", "['Hex']").stderr
        assert "Error.BadPlace" in bus.gdbus("org.quorl.Viewer.GoTo", "nowhere").stderr
        assert bus.property("File") == f"(<'{bench.folder}/numbered.txt'>,)", bus.property("File")
        done = bus.gdbus("org.quorl.Viewer.Execute", "[Display Hex]")
        assert done.returncode == 0, done
        wait_until(lambda: bus.property("Format") == "(<'Hex Dump'>,)", "the format to be told", viewer.process)
        assert bus.gdbus("org.freedesktop.Application.ActivateAction", "text", "[]", "{}").returncode == 0
        wait_until(lambda: bus.property("Format") == "(<'Text'>,)", "the action to act", viewer.process)
        uri = "file://" + other.replace("%", "%25").replace(" ", "%20")
        assert bus.gdbus("org.freedesktop.Application.Open", f"['{uri}']", "{}").returncode == 0
        viewer.find("Quorl - of ümläuts %20.txt")
        bench.expect_rows(viewer, ["the other file"], "the file of the URI")
        # A search of 64 GB is ended by who began it, or by another client.
        os.truncate(bench.write("huge.bin", b"x"), 1 << 36)
        assert bus.send('[Open "huge.bin"]') == 0
        viewer.find("Quorl - huge.bin")
        search = subprocess.Popen(["gdbus", "call", "--session", "--dest", NAME, "--object-path", PATH, "--method",
                                   "org.quorl.Viewer.Find", "nowhere", "[]"], env=bus.env, stderr=subprocess.PIPE,
                                  text=True)
        wait_until(lambda: bus.property("Busy") == "(<true>,)", "the search to be told", viewer.process)
        assert "Error.Busy" in bus.gdbus("org.quorl.Viewer.Rows").stderr
        assert bus.gdbus("org.quorl.Viewer.Cancel").returncode == 0
        ended = search.communicate(timeout=20)[1]
        assert "Error.Canceled" in ended, ended
        for commands, error in (("[]", "NotProcessed"), ("[Nonsense]", "NotProcessed"), ("x" * 257, "TooLong")):
            refused = bus.gdbus("org.quorl.Viewer.Execute", commands)
            assert refused.returncode != 0 and "org.quorl.Error." + error in refused.stderr, refused
        refused = bus.gdbus("org.freedesktop.DBus.Properties.Set", "org.quorl.Viewer", "File", "<'x'>")
        assert "PropertyReadOnly" in refused.stderr, refused
        sent = bus.run("--session", "--print-reply", "--dest=" + NAME, PATH, "org.quorl.Viewer.Execute",
                       "string:[Exit]", program="dbus-send")
        assert sent.returncode == 0, sent
        viewer.wait_end()
        watcher.terminate()
        told = watcher.communicate()[0]
        assert "PropertiesChanged" in told and '"Hex Dump"' in told, told


def own_client(bench):
    bench.numbered_file()
    with Bus(bench) as bus:
        assert bus.send("[Display Hex]") == 2, "nobody serves"
        first = bus.show("numbered.txt")
        bench.write("second.txt", b"of the second viewer\n")
        second = bus.show("second.txt")
        listed = [line.split("\t") for line in bus.run("--list").stdout.splitlines()]
        assert [os.path.basename(path) for _, path in listed] == ["second.txt", "numbered.txt"], listed
        assert [int(process) for process, _ in listed] == [second.process.pid, first.process.pid], listed
        assert bus.send('[Open "numbered.txt"]') == 0
        second.find("Quorl - numbered.txt")
        assert bus.send(f'[Open "{bench.folder}/second.txt"][Display Text]', "--to", str(first.process.pid)) == 0
        first.find("Quorl - second.txt")
        bench.expect_rows(first, ["of the second viewer"], "the file that the first viewer was sent")
        assert bus.send("[]") == 1 and bus.send("[Open missing]") == 0, "what is no command, and what has no effect"
        # A dialog is not disturbed, and who sends is told.
        second.focus()
        press(second, "F5")
        dialog = dialog_of(second)
        assert bus.send("[Window Restore][Exit]") == 1 and bus.send("[Window Restore]") == 0
        assert dialog in second.windows(), "the dialog stays"
        press(second, "Escape")
        wait_until(lambda: dialog not in second.windows(), "the dialog to close", second.process)
        # A client that sends without pause does not keep the keys from the viewer.
        flood = subprocess.Popen([desktop.PROGRAM, "--send", "-"], env=bus.env, stdin=subprocess.PIPE, text=True)
        flood.stdin.write("[Window OnTop][Window OnTop]\n" * 3000)
        flood.stdin.flush()
        second.focus()
        press(second, "End", "Home", "Page_Down")
        rows = bench.reader().rows
        bench.expect_top(second, rows, "a page on, while strings come in")
        assert flood.poll() is None, "the strings are all there already"
        flood.communicate()
        assert flood.returncode == 0
        # What the menu turns off is gone from the bus.
        assert bus.send("[DDE]", "--to", str(first.process.pid)) == 0
        wait_until(lambda: len(bus.run("--list").stdout.splitlines()) == 1, "the first viewer to serve no more")
        assert bus.send("[Exit]") == 0
        second.wait_end()


def installed(bench):
    """An installed program is started by the bus, without a window until it is asked for one, and finds its help."""
    prefix = bench.path("installed")
    subprocess.run(["cmake", "--install", desktop.BUILD, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    bench.write("asked for.txt", b"of the client\n")
    with Bus(bench, os.path.join(prefix, "share")) as bus:
        assert bus.gdbus("org.freedesktop.DBus.Properties.Get", "org.quorl.Viewer", "File").stdout.strip() == "(<''>,)"
        process = int(bus.run("--list").stdout.split()[0])
        exe = os.readlink(f"/proc/{process}/exe")
        assert exe == os.path.join(prefix, "bin", "quorl"), exe

        def windows():
            return bench.desktop.xdotool("search", "--all", "--onlyvisible", "--pid", process, "--name", ".",
                                         check=False).split()

        try:
            assert windows() == [], "no window yet"
            assert bus.gdbus("org.freedesktop.Application.Open", f"['file://{bench.folder}/asked%20for.txt']",
                             "{}").returncode == 0
            window = wait_until(windows, "the window")[0]
            bench.desktop.xdotool("windowactivate", "--sync", window)
            title = ["getwindowfocus", "getwindowname"]
            wait_until(lambda: bench.desktop.xdotool(*title, check=False).strip() == "Quorl - asked for.txt", "the file")
            bench.desktop.keys("F1")
            wait_until(lambda: bench.desktop.xdotool(*title, check=False).strip() == "Keys and mouse - Quorl Help", "the help book")
        finally:
            os.kill(process, 15)
        wait_until(lambda: not windows(), "the windows to go")


ALL_TESTS = [("bus-stock-clients", stock_clients), ("bus-own-client", own_client),
             ("bus-installed", installed)]
