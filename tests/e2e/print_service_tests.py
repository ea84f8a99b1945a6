"""Jobs on a real print service: pages arrive with their text and with what was asked for, a job that is given up
leaves nothing, and a service that stops or dies is told.
"""
import glob
import os
import re
import signal
import subprocess

import desktop
import print_service

CLIENT = os.path.join(desktop.BUILD, "bin", "print_client")
ROWS = 60


def check(condition, what):
    if not condition:
        raise desktop.Failure(what)


def start_client(service, *words):
    return subprocess.Popen([CLIENT, "print", *words], env=service.environment, stdout=subprocess.PIPE, text=True)


def output_of(client):
    told, _ = client.communicate(timeout=desktop.PATIENCE_S * 2)
    return client.returncode, told


def print_pages(service, *words):
    """Prints, and gives the job's number."""
    status, told = output_of(start_client(service, *words))
    check(status == 0, f"{words}: {told}")
    return int(re.match(r"job (\d+)\n", told).group(1)), told


def check_document(path, pages):
    """All rows of all pages stand in the document, in order, and nothing else."""
    facts = subprocess.run(["pdfinfo", path], capture_output=True, text=True, check=True).stdout
    check(re.search(rf"^Pages: +{pages}$", facts, re.MULTILINE), f"{path}: {facts}")
    check("A4" in facts, f"{path}: {facts}")
    text = subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True, text=True, check=True).stdout
    expected = [f"page {page} row {row} of the printed text" for page in range(1, pages + 1)
                for row in range(1, ROWS + 1)]
    check([line.lstrip("\f") for line in text.splitlines() if line.strip("\f")] == expected, f"text of {path}")
    fonts = subprocess.run(["pdffonts", path], capture_output=True, text=True, check=True).stdout.splitlines()[2:]
    check(fonts and all(re.search(r" yes +yes +yes +\d+ +0$", font) for font in fonts), f"fonts: {fonts}")


def test_jobs_arrive(_bench):
    with print_service.PrintService() as service:
        queues = service.run([CLIENT, "list"]).splitlines()
        check(queues == ["kept default: Keeps jobs", "device: Hands jobs on"], f"queues: {queues}")
        cases = [
            (["copies=3", "sides=two", "media=na_letter_8.5x11in", "gray"],
             {"copies": "3", "sides": "two-sided-long-edge", "media": "na_letter_8.5x11in",
              "print-color-mode": "monochrome"}),
            # What the queue does not know is left out.
            (["media=om_nothing_77x77mm", "source=tray-77"], {"copies": None, "sides": None, "media": None}),
        ]
        for words, expected in cases:
            number, _ = print_pages(service, "kept", "5", *words)
            job = service.ended_job("kept", number)
            check(job["job-state"] == "completed", f"{words}: {job}")
            for name, value in expected.items():
                check(job.get(name) == value, f"{words}: {name} is {job.get(name)}")
            check("page-ranges" not in job and "media-col" not in job, f"{words}: {job}")
            check_document(service.path("kept", f"job-{number}.pdf"), 5)
        number, _ = print_pages(service, "kept", "1", "source=manual", "media=iso_a4_210x297mm")
        service.ended_job("kept", number)
        with open(service.path("kept", f"job-{number}.txt"), encoding="utf-8") as file:
            asked = file.read()
        check("InputSlot=Manual" in asked and "PageSize=A4" in asked, f"source: {asked}")
        number, _ = print_pages(service, "device", "40", "copies=2", "sides=two", "media=iso_a4_210x297mm")
        job = service.ended_job("device", number)
        check((job["job-state"], job.get("copies"), job.get("sides")) == ("completed", "2", "two-sided-long-edge"),
              f"device: {job}")
        check_document(glob.glob(service.path("device", "*.pdf"))[0], 40)
    check(not os.path.exists(service.folder), "the service left files behind")
    check(not service.processes, "the service left processes behind")


def test_jobs_given_up(_bench):
    with print_service.PrintService() as service:
        number, told = print_pages(service, "kept", "500", "cancel=200")
        check("canceled: stage 4" in told, told)
        check(service.ended_job("kept", number)["job-state"] == "canceled", "canceled in the middle")
        status, told = output_of(start_client(service, "no-such-queue", "1"))
        check(status == 1 and told.startswith("begin failed: "), told)

        # One that stops taking bytes: whoever waits can end the wait, and nothing is printed in part.
        client = start_client(service, "kept", "100000", "patience=500")
        service.wait_for(lambda: client.stdout.readline().startswith("job "), "job")
        service.cupsd.send_signal(signal.SIGSTOP)
        status, told = output_of(client)
        check(status == 1 and told.startswith("page failed: "), told)
        service.cupsd.send_signal(signal.SIGCONT)
        number, _ = print_pages(service, "kept", "1")
        service.ended_job("kept", number)
        state = service.job("kept", number - 1)["job-state"]
        check(state in ("canceled", "aborted", "pending-held"), f"job of a stopped service: {state}")
        kept = sorted(os.listdir(service.path("kept")))
        check(kept == [f"job-{number}.pdf", f"job-{number}.txt"], f"kept: {kept}")

        # One that dies.
        client = start_client(service, "kept", "100000", "patience=500")
        service.wait_for(lambda: client.stdout.readline().startswith("job "), "job")
        service.cupsd.kill()
        status, told = output_of(client)
        check(status == 1 and told.startswith("page failed: "), told)
        check(sorted(os.listdir(service.path("kept"))) == kept, "nothing more was kept")
        check(service.run([CLIENT, "list"]) == "", "no queues without a service")


ALL_TESTS = [("print-jobs-arrive", test_jobs_arrive), ("print-jobs-given-up", test_jobs_given_up)]
