"""The whole program as the service starts it, in the compositor, whose display is memory."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from stage import PATIENCE, Show

PROGRAM = Path(__file__).parents[2] / "kiosk/program"
# The compositor refuses to run as root.
AS_NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] if os.getuid() == 0 else []
# As under the service nothing gains rights. Containers may forbid the namespaces in which the browser locks pages in.
LOCKED_UP = [*AS_NOBODY, "setpriv", "--no-new-privs"]
SANDBOX = [] if subprocess.run([*LOCKED_UP, "unshare", "--user", "true"]).returncode == 0 else ["browser = --no-sandbox"]


class Compositor(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.folder.chmod(0o755)
        # Of the program too, as the tree need not be readable for everybody.
        shutil.copytree(PROGRAM, self.folder / "program")
        for name in ("cache", "run"):
            (self.folder / name).mkdir(mode=0o700)
            if AS_NOBODY:
                os.chown(self.folder / name, 65534, 65534)
        self.environment = {
            "PATH": os.environ["PATH"], "HOME": str(self.folder / "cache"), "CACHE_DIRECTORY": str(self.folder / "cache"),
            "XDG_RUNTIME_DIR": str(self.folder / "run"),
            "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
        }

    def start(self, *lines):
        settings = self.folder / "kiosk.conf"
        settings.write_text("\n".join([*lines, *SANDBOX, "browser = --disable-gpu"]), encoding="utf-8")
        settings.chmod(0o644)
        self.log = open(self.folder / "log", "w+", encoding="utf-8")
        self.addCleanup(self.log.close)
        kiosk = subprocess.Popen([*LOCKED_UP, sys.executable, "-I", "-B", self.folder / "program", settings],
                                 stdin=subprocess.DEVNULL, stderr=self.log, env=self.environment)
        self.addCleanup(self.end, kiosk)
        return kiosk

    def end(self, kiosk):
        kiosk.send_signal(signal.SIGTERM)
        kiosk.wait(PATIENCE)

    def until(self, what, probe):
        deadline = time.monotonic() + PATIENCE
        while not (found := probe()):
            if time.monotonic() > deadline:
                self.log.seek(0)
                raise AssertionError(f"waited {PATIENCE} s for {what}; the log says:\n{self.log.read()}")
            time.sleep(0.1)
        return found

    def said(self, text):
        return text in (self.folder / "log").read_text(encoding="utf-8")

    def test_shows_a_show_turned_and_full_screen_and_keeps_its_picture_when_it_is_stopped(self):
        show = Show(self.folder)
        self.addCleanup(show.stop)
        kiosk = self.start(f"url = {show.url}", "rotate = 90")
        self.until("the show", lambda: self.said(f"shows {show.url}"))
        self.end(kiosk)
        self.assertEqual(0, kiosk.returncode)
        self.assertTrue((self.folder / "cache/picture.jpg").exists(), (self.folder / "log").read_text(encoding="utf-8"))
        self.assertEqual((720, 1280), size_of_jpeg((self.folder / "cache/picture.jpg").read_bytes()))

    def test_a_compositor_that_ends_is_started_anew_and_what_is_wrong_is_said(self):
        self.start("url = http://127.0.0.1:1/", "rotate = 45")
        first = self.until("the compositor", self.compositor)
        self.assertTrue(self.said('kiosk.conf:2: "45" is no rotation'))
        os.kill(first, signal.SIGKILL)
        self.until("another", lambda: self.compositor() not in (None, first))
        self.assertTrue(self.said("the browser is started anew in 1 s, as it has ended"))

    # Its process, of those that this test has started.
    def compositor(self):
        for status in Path("/proc").glob("[0-9]*/environ"):
            try:
                if (status.parent / "comm").read_text() == "cage\n" and str(self.folder).encode() in status.read_bytes():
                    return int(status.parent.name)
            except OSError:
                pass  # it has ended meanwhile
        return None


def size_of_jpeg(data):
    """Width and height, from its frame header (ITU-T T.81, B.2.2)."""
    at = 2
    while data[at + 1] not in (0xC0, 0xC1, 0xC2):
        at += 2 + int.from_bytes(data[at + 2 : at + 4], "big")
    return int.from_bytes(data[at + 7 : at + 9], "big"), int.from_bytes(data[at + 5 : at + 7], "big")


if __name__ == "__main__":
    unittest.main()
