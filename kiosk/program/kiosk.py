"""Keeps a show on the screen: starts the browser and whatever replaces one that hangs or crashes, goes to the show as soon
as it answers, keeps its picture, and sleeps by the hours."""

import asyncio
import base64
import socket
from datetime import datetime
from time import monotonic

import local_page
from browser import BrowserGone, CallFailed
from hours import is_on

NO_FRAME = 60
"""Seconds without a frame after which a browser hangs."""
BETWEEN_FRAMES = 10
BETWEEN_PICTURES = 60
BETWEEN_LOOKS_AT_THE_CLOCK = 20
SHORTEST_PAUSE, LONGEST_PAUSE = 1, 15
LONGEST_LOADING = 30
LONGEST_BACK_OFF = 60
LONGEST_FAREWELL = 20
GOOD_RUN = 600
"""Seconds after which a browser that ends begins with a short pause again."""

_NEXT_FRAME = "new Promise((done) => requestAnimationFrame(() => done(true)))"


class Clock:
    """The machine's."""

    now = staticmethod(datetime.now)
    monotonic = staticmethod(monotonic)
    sleep = staticmethod(asyncio.sleep)


class Kiosk:
    """Of one machine. `start` is a coroutine that starts a Browser; `tell` takes a line for the log."""

    def __init__(self, configuration, *, start, picture, console, clock, tell, notice=""):
        self._configuration = configuration
        self._start = start
        self._picture = picture
        self._console = console
        self._clock = clock
        self._tell = tell
        self._notice = notice
        self._stopping = asyncio.Event()

    def stop(self):
        """Has run() end after a last picture."""
        self._stopping.set()

    async def run(self):
        """Until stop()."""
        failures = 0
        while not self._stopping.is_set():
            if not self._is_on():
                await self._sleep()
                continue
            self._console.clear()
            began = self._clock.monotonic()
            try:
                browser = await self._browser()
                if browser:
                    await _Showing(self, browser).run()
                failures = 0
            except BrowserGone as gone:
                if self._clock.monotonic() - began >= GOOD_RUN:
                    failures = 0
                pause = min(LONGEST_BACK_OFF, 2**failures)
                failures += 1
                self._tell(f"the browser is started anew in {pause} s, as {gone}")
                await self._rest(pause)

    async def _browser(self):
        """One whose first page stands; none if the kiosk stops before."""
        starting = asyncio.create_task(self._start())
        await _first_of(starting, self._stopping.wait())
        return None if starting.cancelled() else starting.result()

    def _is_on(self):
        return is_on(self._configuration.windows, self._clock.now())

    async def _sleep(self):
        self._tell("the screen sleeps")
        self._console.switch_off()
        while not self._is_on() and not self._stopping.is_set():
            await self._rest(BETWEEN_LOOKS_AT_THE_CLOCK)
        self._console.switch_on()
        if not self._stopping.is_set():
            self._tell("the screen wakes up")

    async def _rest(self, seconds):
        await _first_of(self._clock.sleep(seconds), self._stopping.wait())


class _Showing:
    """One browser from its start to its end."""

    def __init__(self, kiosk, browser):
        self._kiosk = kiosk
        self._configuration = kiosk._configuration
        self._clock = kiosk._clock
        self._browser = browser
        self._frame = None
        self._problem = None
        self._told = None
        self._has_show = asyncio.Event()
        self._reload = asyncio.Event()
        self._crashed = asyncio.Event()

    async def run(self):
        """Until the hours are over or the kiosk stops; BrowserGone when another browser is needed."""
        try:
            await _first_of(
                self._follow(), self._watch_frames(), self._keep_pictures(), self._watch_for_crashes(),
                self._watch_the_hours(), self._kiosk._stopping.wait(),
            )
            async with asyncio.timeout(LONGEST_FAREWELL):
                await self._keep_picture()
        except TimeoutError:
            self._kiosk._tell("the last picture was not to be had; the one before stays")
        except CallFailed as error:
            raise BrowserGone(f"it refuses: {error}") from error
        finally:
            await self._browser.kill()

    async def _follow(self):
        browser = self._browser
        browser.on("Fetch.requestPaused", self._judge)
        browser.on("Page.frameNavigated", self._has_navigated)
        browser.on("Inspector.targetCrashed", self._has_crashed)
        self._frame = (await browser.call("Page.getFrameTree"))["frameTree"]["frame"]["id"]
        for domain in ("Page", "Inspector"):
            await browser.call(f"{domain}.enable")
        judged = [{"resourceType": kind, "requestStage": "Response"} for kind in ("Document", "Script")]
        await browser.call("Fetch.enable", patterns=judged)
        await self._show_local_page()
        await self._load()
        while True:
            # The show's page could not load itself anew, or not all of its scripts: it stands, and is asked to try again.
            await self._reload.wait()
            self._reload.clear()
            await self._clock.sleep(LONGEST_PAUSE)
            await browser.call("Page.reload")

    async def _load(self):
        urls = self._configuration.urls
        if not urls:
            await asyncio.Event().wait()
        pause = SHORTEST_PAUSE
        while True:
            for url in urls:
                if await self._open(url):
                    return
            await self._clock.sleep(pause)
            pause = min(LONGEST_PAUSE, pause * 2)

    async def _open(self, url):
        self._problem = f"it has not answered within {LONGEST_LOADING} s"
        opening = asyncio.create_task(self._go(url))
        try:
            await _first_of(asyncio.shield(opening), self._clock.sleep(LONGEST_LOADING))
            if opening.done() and opening.result():
                self._kiosk._tell(f"shows {local_page.shown_address(url)}")
                return True
            if not opening.done():
                await self._browser.call("Page.stopLoading")
        finally:
            opening.cancel()
        told = f"waits for {local_page.shown_address(url)}: {self._problem}"
        if told != self._told:
            self._kiosk._tell(told)
            self._told = told
        await self._show_local_page(url)
        return False

    # Whether the page stands now.
    async def _go(self, url):
        answer = await self._browser.call("Page.navigate", url=url)
        if "errorText" in answer:
            return False
        await self._has_show.wait()
        return True

    async def _judge(self, request):
        """Whether the page that a server has answered comes onto the screen; where it does not, what is there stays."""
        problem = None
        if request["frameId"] == self._frame:
            if error := request.get("responseErrorReason"):
                problem = f"it cannot be reached ({error})"
            elif request.get("responseStatusCode", 200) >= 400:
                problem = f"it answers {request['responseStatusCode']}"
        is_page = request["resourceType"] == "Document"
        if problem and is_page:
            self._problem = problem
            await self._browser.call("Fetch.failRequest", requestId=request["requestId"], errorReason="Aborted")
        else:
            await self._browser.call("Fetch.continueRequest", requestId=request["requestId"])
        if problem and (self._has_show.is_set() or not is_page):
            self._reload.set()

    async def _has_navigated(self, parameters):
        frame = parameters["frame"]
        if frame["id"] == self._frame and not frame["url"].startswith("data:"):
            self._has_show.set()

    async def _has_crashed(self, _):
        self._crashed.set()

    async def _show_local_page(self, url=None):
        kiosk, taken = self._kiosk, self._kiosk._picture.taken()
        title, text = "", ""
        if kiosk._notice:
            title, text = "This screen is not set up", kiosk._notice
        elif url:
            title, text = f"Waiting for {local_page.shown_address(url)}", f"{self._problem}\n{socket.gethostname()}"
        picture = None if kiosk._notice or not taken else kiosk._picture.as_url()
        html = local_page.page(stale=self._configuration.stale, picture=picture, taken=taken, title=title, text=text)
        await self._browser.call("Page.setDocumentContent", frameId=self._frame, html=html)

    async def _watch_frames(self):
        last = self._clock.monotonic()
        while True:
            frame = asyncio.create_task(self._browser.evaluate(_NEXT_FRAME))
            try:
                await _first_of(asyncio.shield(frame), self._clock.sleep(NO_FRAME))
                if frame.done() and frame.result():
                    last = self._clock.monotonic()
            except CallFailed:
                pass  # the page went away meanwhile
            finally:
                frame.cancel()
            if self._clock.monotonic() - last >= NO_FRAME:
                raise BrowserGone(f"it has painted nothing for {NO_FRAME} s")
            await self._clock.sleep(BETWEEN_FRAMES)

    async def _keep_pictures(self):
        while True:
            await self._clock.sleep(BETWEEN_PICTURES)
            await self._keep_picture()

    async def _keep_picture(self):
        if not self._has_show.is_set():
            return
        try:
            shot = await self._browser.call("Page.captureScreenshot", format="jpeg", quality=90)
            self._kiosk._picture.keep(base64.b64decode(shot["data"]))
        except (CallFailed, OSError) as error:
            self._kiosk._tell(f"the picture cannot be kept: {error}")

    async def _watch_for_crashes(self):
        await _first_of(self._crashed.wait(), asyncio.shield(self._browser.ended))
        raise BrowserGone("it has crashed" if self._crashed.is_set() else "it has ended")

    async def _watch_the_hours(self):
        while self._kiosk._is_on():
            await self._clock.sleep(BETWEEN_LOOKS_AT_THE_CLOCK)


async def _first_of(*works):
    """Runs all until one is done or fails, and ends the others."""
    tasks = [asyncio.ensure_future(work) for work in works]
    try:
        done, _ = await asyncio.wait(tasks, return_when=asyncio.FIRST_COMPLETED)
    finally:
        for task in tasks:
            task.cancel()
        await asyncio.gather(*tasks, return_exceptions=True)
    for task in done:
        task.result()
