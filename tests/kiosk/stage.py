"""What tests of the kiosk need: a clock that they move, shows, a browser without a display."""

import asyncio
import os
import shutil
import signal
import subprocess
import tempfile
from datetime import datetime, timedelta
from pathlib import Path

import local_page
from browser import Browser, BrowserGone, CallFailed
from configuration import Configuration
from kiosk import Kiosk
from picture import Picture

SAMPLES = Path(__file__).parents[2] / "samples"
PATIENCE = 60
"""Seconds after which something hangs; a machine may be as busy as it likes."""


class MovedClock:
    """Stands until it is moved."""

    def __init__(self, now):
        self._begin = now
        self._passed = 0.0
        self._sleepers = []
        self.slept = []

    def now(self):
        return self._begin + timedelta(seconds=self._passed)

    def monotonic(self):
        return self._passed

    async def sleep(self, seconds):
        self.slept.append(seconds)
        sleeper = (self._passed + seconds, asyncio.get_running_loop().create_future())
        self._sleepers.append(sleeper)
        try:
            await sleeper[1]
        finally:
            self._sleepers.remove(sleeper)

    def move(self, seconds):
        self._passed += seconds
        for due, waiting in self._sleepers:
            if due <= self._passed and not waiting.done():
                waiting.set_result(None)


async def until(what, probe, step=lambda: None):
    """Takes a step and looks again until `probe` returns something true."""
    for _ in range(PATIENCE * 20):
        found = probe()
        if asyncio.iscoroutine(found):
            found = await found
        if found:
            return found
        step()
        await asyncio.sleep(0.05)
    raise AssertionError(f"waited {PATIENCE} s for {what}")


class Show:
    """A show of the shop sample, which keeps its port over stops and starts."""

    def __init__(self, folder):
        self._folder = Path(folder)
        # The program writes its logs beside itself.
        self._program = shutil.copy(os.environ["LUMENFOLD"], self._folder / "lumenfold")
        shutil.copytree(SAMPLES / "shop", self._folder / "shop")
        self._process = None
        self.port = 0
        self.start()

    @property
    def url(self):
        return f"http://127.0.0.1:{self.port}/"

    def start(self):
        self._process = subprocess.Popen(
            [self._program, "show", self._folder / "shop/shop.pptx", "--port", str(self.port)],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
            env={**os.environ, "HOME": str(self._folder)},
        )
        for line in self._process.stdout:
            if line.startswith("Screen:"):
                self.port = int(line.rpartition(":")[2].strip("/\n"))
                return
        raise AssertionError(f"the show ended with {self._process.wait()}")

    def stop(self):
        self._process.send_signal(signal.SIGKILL)
        self._process.wait()
        self._process.stdout.close()


class FakeConsole:
    def __init__(self):
        self.is_off = False

    def clear(self):
        pass

    def switch_off(self):
        self.is_off = True

    def switch_on(self):
        self.is_off = False


class Screen:
    """A kiosk with a browser that has no display; several in one folder are one machine that was restarted."""

    def __init__(self, folder, *, now=datetime(2026, 1, 5, 9), start=None, notice="", **settings):
        self.clock = MovedClock(now)
        self.console = FakeConsole()
        self.log = []
        self.browsers = []
        self.frames = 0
        self._kiosk = Kiosk(
            Configuration(**settings), start=start or self._start, picture=Picture(Path(folder) / "picture.jpg"),
            console=self.console, clock=self.clock, tell=self.log.append, notice=notice,
        )

    async def __aenter__(self):
        self._running = asyncio.create_task(self._kiosk.run())
        return self

    async def __aexit__(self, *_):
        self._kiosk.stop()
        await asyncio.wait_for(self._running, PATIENCE)

    @property
    def browser(self):
        return self.browsers[-1]

    async def _start(self):
        profile = tempfile.mkdtemp()
        browser = await Browser.start(
            ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--window-size=640,360",
             "--disable-background-networking", "--disable-component-update", "--disable-sync", "--remote-debugging-pipe",
             f"--user-data-dir={profile}"],
            local_page.START, {**os.environ, "HOME": profile},
        )
        kill, evaluate = browser.kill, browser.evaluate

        async def kill_and_clear():
            await kill()
            shutil.rmtree(profile, ignore_errors=True)

        async def count(expression):
            value = await evaluate(expression)
            self.frames += 1
            return value

        browser.kill, browser.evaluate, browser.look = kill_and_clear, count, evaluate
        self.browsers.append(browser)
        return browser

    async def sees(self, expression):
        """Waits until it holds in the newest browser's page, and returns its value."""

        async def look():
            try:
                return self.browsers and await self.browser.look(expression)
            except (BrowserGone, CallFailed):
                return False  # between two pages, or two browsers

        return await until(expression, look)

    async def sees_slide(self):
        await self.sees("!!document.querySelector('.frame.current > .slide')")

    def said(self, text):
        return any(text in line for line in self.log)
