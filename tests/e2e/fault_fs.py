"""The file system of tests/faultfs, mounted for one test: files that are slow, fail, or change on command."""
import errno
import os
import subprocess
import tempfile
import time

import desktop

PROGRAM = os.path.join(desktop.BUILD, "bin", "faultfs")


def unavailable():
    """Why such a file system cannot be had here; None: it can."""
    if not os.path.exists(PROGRAM):
        return "built without libfuse3"
    if not os.access("/dev/fuse", os.R_OK | os.W_OK):
        return "no right to use /dev/fuse"
    try:
        with FaultFs():
            return None
    except desktop.Failure as error:
        return str(error)


class FaultFs:
    def __enter__(self):
        self.folder = tempfile.mkdtemp(prefix="quorl-disk-")
        self.mount = tempfile.mkdtemp(prefix="quorl-mount-")
        self.server = subprocess.Popen([PROGRAM, self.mount, self.folder], stderr=subprocess.PIPE)
        end = time.monotonic() + 5
        while not os.path.ismount(self.mount):
            if self.server.poll() is not None or time.monotonic() > end:
                self.server.kill()
                raise desktop.Failure("mounts are not allowed here")
            time.sleep(0.01)
        return self

    def __exit__(self, *_):
        self.command("clear")
        subprocess.run(["fusermount3", "-u", "-z", self.mount], check=False, stderr=subprocess.DEVNULL)
        self.server.wait(5)
        os.rmdir(self.mount)
        for name in os.listdir(self.folder):
            os.remove(os.path.join(self.folder, name))
        os.rmdir(self.folder)

    def write(self, name, data):
        """Puts a file on the disk; its path as the viewer sees it."""
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(data)
        return os.path.join(self.mount, name)

    def command(self, *lines):
        with open(os.path.join(self.mount, ".control"), "wb", buffering=0) as control:
            for line in lines:
                control.write(line.encode())

    def counts(self):
        with open(os.path.join(self.mount, ".control"), "rb", buffering=0) as control:
            words = control.read(200).split()
        return {words[i].decode(): int(words[i + 1]) for i in range(0, len(words), 2)}


EIO = errno.EIO
EACCES = errno.EACCES
