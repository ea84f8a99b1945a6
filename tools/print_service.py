#!/usr/bin/env python3
"""A print service of our own for tests and for looking at what a printer gets: no system manager, no root, no
network beyond this machine, and nothing left behind when it ends.

    tools/print_service.py [FOLDER]    runs until Ctrl+C or a signal; prints the setting that leads programs
                                       to it: CUPS_SERVER=...

It has two queues. "kept", the default one, keeps each job as FOLDER/kept/job-N.pdf with the options that came
along. "device" hands its jobs on to an IPP Everywhere printer, a process of its own, which keeps them in
FOLDER/device; that one wants a message bus, which is private as well.
"""
import contextlib
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

PATIENCE_S = 30.0
SYSTEM_PROGRAMS = "/usr/lib/cups"

SERVICE_SETTINGS = """LogLevel warn
MaxLogSize 0
Listen {folder}/cups.sock
Listen localhost:{port}
Browsing No
DefaultAuthType None
WebInterface No
PreserveJobHistory Yes
PreserveJobFiles No
JobRetryInterval 1
ErrorPolicy abort-job
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  SubscriptionPrivateAccess all
  SubscriptionPrivateValues none
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
"""

FILE_SETTINGS = """ServerRoot {folder}/root
ServerBin {folder}/programs
CacheDir {folder}/cache
StateDir {folder}/state
RequestRoot {folder}/requests
TempDir {folder}/requests/tmp
AccessLog {folder}/access.log
ErrorLog {folder}/error.log
PageLog {folder}/page.log
Printcap
{users}
"""

# What a queue can do; a document goes to the backend as it is.
QUEUE_ABILITIES = """*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "KEPT.PPD"
*Manufacturer: "Quorl"
*Product: "(Keeper)"
*ModelName: "Keeper"
*ShortNickName: "Keeper"
*NickName: "Keeper"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*cupsVersion: 2.4
*cupsManualCopies: False
*cupsFilter2: "application/pdf application/pdf 0 -"
*OpenUI *PageSize: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: A4
*PageSize A4: "<</PageSize[595 842]>>setpagedevice"
*PageSize Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: A4
*PageRegion A4: "<</PageSize[595 842]>>setpagedevice"
*PageRegion Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4: "12 12 583 830"
*ImageableArea Letter: "12 12 600 780"
*DefaultPaperDimension: A4
*PaperDimension A4: "595 842"
*PaperDimension Letter: "612 792"
*OpenUI *InputSlot: PickOne
*OrderDependency: 20 AnySetup *InputSlot
*DefaultInputSlot: Upper
*InputSlot Upper: ""
*InputSlot Manual: ""
*CloseUI: *InputSlot
*OpenUI *Duplex: PickOne
*OrderDependency: 30 AnySetup *Duplex
*DefaultDuplex: None
*Duplex None: ""
*Duplex DuplexNoTumble: ""
*Duplex DuplexTumble: ""
*CloseUI: *Duplex
*OpenUI *ColorModel: PickOne
*OrderDependency: 40 AnySetup *ColorModel
*DefaultColorModel: RGB
*ColorModel Gray: ""
*ColorModel RGB: ""
*CloseUI: *ColorModel
"""

# Keeps a job: its document, and what was asked for, a line each.
KEEPER = """#!/bin/sh
[ $# -eq 0 ] && {{ echo 'direct keep "Unknown" "Keeper"'; exit 0; }}
cat ${{6:+"$6"}} > "{folder}/kept/part-$1" || exit 1
printf 'copies %s\\noptions %s\\n' "$4" "$5" > "{folder}/kept/job-$1.txt"
mv "{folder}/kept/part-$1" "{folder}/kept/job-$1.pdf"
"""

BUS_SETTINGS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path={folder}/bus.sock</listen>
  <policy context="default"><allow send_destination="*"/><allow own="*"/><allow eavesdrop="true"/></policy>
</busconfig>
"""

JOB_REQUEST = """{{
OPERATION Get-Job-Attributes
GROUP operation-attributes-tag
ATTR charset attributes-charset utf-8
ATTR naturalLanguage attributes-natural-language en
ATTR uri printer-uri $uri
ATTR integer job-id {job}
ATTR name requesting-user-name $user
STATUS successful-ok
}}
"""


class Failure(Exception):
    """The service does not do what it should."""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def unavailable():
    """Why no service can be started here, or None."""
    missing = [name for name in ("cupsd", "lpadmin", "ipptool", "ippeveprinter", "dbus-daemon")
               if shutil.which(name, path=os.environ["PATH"] + ":/usr/sbin") is None]
    return f"missing: {' '.join(missing)} (tools/setup.sh test installs them)" if missing else None


class PrintService:
    """The service, with `environment` for the programs that shall print with it. `device_arguments` are further
    words for the printer: ["-s", "20"] makes it slow."""

    def __init__(self, folder=None, device_arguments=()):
        self.own_folder = folder is None
        self.folder = os.path.abspath(folder or tempfile.mkdtemp(prefix="quorl-print-"))
        self.processes = []
        self.port, self.device_port = free_port(), free_port()
        self.device_arguments = list(device_arguments)
        self.environment = dict(os.environ, CUPS_SERVER=os.path.join(self.folder, "cups.sock"),
                                DBUS_SYSTEM_BUS_ADDRESS=f"unix:path={self.folder}/bus.sock",
                                PATH=os.environ["PATH"] + ":/usr/sbin", HOME=self.folder)

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.end()
            raise
        return self

    def __exit__(self, *_):
        self.end()

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def write(self, name, text, mode=0o644):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(self.path(name), mode)

    def start(self):
        for name in ("root", "programs/backend", "cache", "state", "requests/tmp", "kept", "device"):
            os.makedirs(self.path(name), exist_ok=True)
        os.chmod(self.folder, 0o755)
        for name in ("daemon", "notifier", "filter", "cgi-bin", "monitor", "driver"):
            os.symlink(os.path.join(SYSTEM_PROGRAMS, name), self.path("programs", name))
        os.symlink(os.path.join(SYSTEM_PROGRAMS, "backend", "ipp"), self.path("programs/backend/ipp"))
        # A backend that nobody else may run is run by the service's own user.
        self.write("programs/backend/keep", KEEPER.format(folder=self.folder), 0o700)
        # The service may be told that a document is ready for a printer as it is.
        self.write("root/local.convs", "application/pdf application/vnd.cups-pdf 0 -\n")
        users = "User lp\nGroup lp\nSystemGroup root" if os.geteuid() == 0 else ""
        self.write("cupsd.conf", SERVICE_SETTINGS.format(folder=self.folder, port=self.port), 0o640)
        self.write("cups-files.conf", FILE_SETTINGS.format(folder=self.folder, users=users), 0o640)
        self.write("bus.conf", BUS_SETTINGS.format(folder=self.folder))
        self.write("kept.ppd", QUEUE_ABILITIES)
        self.run_beside("bus", ["dbus-daemon", "--nofork", "--nopidfile", f"--config-file={self.path('bus.conf')}"])
        self.wait_for(lambda: os.path.exists(self.path("bus.sock")), "the message bus")
        self.run_beside("device", ["ippeveprinter", "-r", "off", "-k", "-2", "-f", "application/pdf", "-c",
                                   "/bin/true", "-d", self.path("device"), "-p", str(self.device_port), "-n",
                                   "localhost"] + self.device_arguments + ["device"])
        self.wait_for(self.device_answers, "the printer")
        self.cupsd = self.run_beside("cupsd", ["cupsd", "-f", "-c", self.path("cupsd.conf"), "-s",
                                               self.path("cups-files.conf")])
        self.wait_for(lambda: os.path.exists(self.path("cups.sock")), "the print service")
        self.run(["lpadmin", "-p", "kept", "-E", "-v", "keep:/", "-P", self.path("kept.ppd"), "-D", "Keeps jobs"])
        self.run(["lpadmin", "-d", "kept"])
        self.run(["lpadmin", "-p", "device", "-E", "-v", f"ipp://localhost:{self.device_port}/ipp/print", "-m",
                  "everywhere", "-D", "Hands jobs on"])

    def end(self):
        for process in reversed(self.processes):
            process.send_signal(signal.SIGCONT)
            process.terminate()
        for process in self.processes:
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(5)
            if process.poll() is None:
                process.kill()
                process.wait()
        self.processes = []
        if self.own_folder:
            shutil.rmtree(self.folder, ignore_errors=True)

    def run_beside(self, name, command):
        with open(self.path(name + ".log"), "wb") as log:
            process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=log,
                                       stderr=log)
        self.processes.append(process)
        return process

    def run(self, command):
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True, errors="replace", timeout=PATIENCE_S,
                              check=False)
        if done.returncode != 0:
            raise Failure(f"{' '.join(command)}: {done.stdout}{done.stderr}")
        return done.stdout

    def wait_for(self, condition, what):
        deadline = time.monotonic() + PATIENCE_S
        while True:
            value = condition()
            if value:
                return value
            dead = [process.args[0] for process in self.processes if process.poll() is not None]
            if dead or time.monotonic() > deadline:
                raise Failure(f"no {what}: {' '.join(dead) + ' ended' if dead else 'it did not come'}")
            time.sleep(0.02)

    def device_answers(self):
        with contextlib.suppress(OSError), socket.create_connection(("localhost", self.device_port), 1):
            return True
        return False

    def job(self, queue, number):
        """The attributes of a job, as the service tells them: name to value; none of one that it does not know."""
        self.write("job.test", JOB_REQUEST.format(job=number))
        try:
            told = self.run(["ipptool", "-tv", f"ipp://localhost:{self.port}/printers/{queue}", self.path("job.test")])
        except Failure as failure:
            if "client-error-not-found" in str(failure):
                return {}
            raise
        return dict(re.findall(r"^ +([a-z-]+) \([^)]*(?:\([^)]*\))?[^)]*\) = (.*)$", told, re.MULTILINE))

    def ended_job(self, queue, number):
        """The attributes of a job when nothing more happens to it."""
        ended = ("canceled", "aborted", "completed")
        return self.wait_for(lambda: (found := self.job(queue, number)).get("job-state") in ended and found,
                             f"end of job {number}")


def main():
    reason = unavailable()
    if reason:
        print(f"print_service: {reason}", file=sys.stderr)
        return 1
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(0))
    with PrintService(sys.argv[1] if len(sys.argv) > 1 else None) as service:
        print(f"CUPS_SERVER={service.environment['CUPS_SERVER']}", flush=True)
        while True:
            signal.pause()


if __name__ == "__main__":
    sys.exit(main())
