"""Chromium, driven through a pipe by its DevTools protocol: no port is open, and it ends with who holds the pipe."""

import asyncio
import json
import os
import signal

LONGEST_MESSAGE = 256 * 1024 * 1024


class BrowserGone(Exception):
    """The browser has ended, or does not do what a browser should."""


class CallFailed(Exception):
    """The browser refuses a call."""


class Browser:
    """A browser and the first page in it; Browser.start() makes one."""

    @classmethod
    async def start(cls, command, page, environment, patience=180):
        """Starts `command`, a Chromium that is told --remote-debugging-pipe, maybe within something else, with a first page.

        Raises BrowserGone when that does not stand within `patience` seconds. Who is cancelled leaves nothing running.
        """
        browser = cls()
        theirs_in, ours_out = os.pipe()
        ours_in, theirs_out = os.pipe()
        # The protocol has its messages at the descriptors 3 and 4.
        shell = 'exec "$@" 3<&0 4>&1 </dev/null >&2'
        try:
            browser._process = await asyncio.create_subprocess_exec(
                "/bin/sh", "-c", shell, "sh", *command, page,
                env=environment, stdin=theirs_in, stdout=theirs_out, start_new_session=True,
            )
        finally:
            os.close(theirs_in)
            os.close(theirs_out)
        stands = False
        try:
            async with asyncio.timeout(patience):
                await browser._connect(ours_in, ours_out)
                await browser._wait_for(page)
            stands = True
        except (TimeoutError, BrowserGone) as error:
            raise BrowserGone(str(error) or f"its first page does not stand {patience} s after its start") from error
        finally:
            if not stands:
                await browser.kill()
        return browser

    def __init__(self):
        self._calls = {}
        self._number = 0
        self._session = None
        self._handlers = {}
        self._tasks = set()
        self.ended = asyncio.get_running_loop().create_future()
        """Done when no more comes from the browser."""

    def on(self, event, handler):
        """Has a coroutine called with the parameters of each such event."""
        self._handlers[event] = handler

    async def call(self, method, **parameters):
        """Returns the result; raises CallFailed or BrowserGone."""
        if self.ended.done():
            raise BrowserGone("it has ended")
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        answer = self._calls[self._number] = asyncio.get_running_loop().create_future()
        self._out.write(json.dumps(message).encode() + b"\0")
        return await answer

    async def evaluate(self, expression):
        """The value of a JavaScript expression, awaited if it is a promise."""
        answer = await self.call("Runtime.evaluate", expression=expression, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in answer:
            raise CallFailed(answer["exceptionDetails"]["text"])
        return answer["result"].get("value")

    async def kill(self):
        """Ends it and all that it has started, at once."""
        try:
            os.killpg(self._process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        await self._process.wait()
        for task in self._tasks:
            task.cancel()
        for transport in self._transports:
            transport.close()
        self._end()

    _transports = ()

    async def _connect(self, ours_in, ours_out):
        loop = asyncio.get_running_loop()
        reader = asyncio.StreamReader(limit=LONGEST_MESSAGE)
        incoming, _ = await loop.connect_read_pipe(lambda: asyncio.StreamReaderProtocol(reader), os.fdopen(ours_in, "rb"))
        self._out, _ = await loop.connect_write_pipe(asyncio.BaseProtocol, os.fdopen(ours_out, "wb"))
        self._transports = (incoming, self._out)
        self._keep(self._read(reader))
        while not (page := await self._first_page()):
            await asyncio.sleep(0.1)
        self._session = (await self.call("Target.attachToTarget", targetId=page, flatten=True))["sessionId"]

    # Its navigation would else undo a later one.
    async def _wait_for(self, page):
        while True:
            try:
                if await self.evaluate("document.readyState === 'complete' && location.href") == page:
                    return
            except CallFailed:
                pass  # it comes in this moment
            await asyncio.sleep(0.1)

    async def _first_page(self):
        targets = (await self.call("Target.getTargets"))["targetInfos"]
        return next((target["targetId"] for target in targets if target["type"] == "page"), None)

    async def _read(self, reader):
        try:
            while True:
                self._take(json.loads((await reader.readuntil(b"\0"))[:-1]))
        except (asyncio.IncompleteReadError, asyncio.LimitOverrunError, ConnectionError):
            self._end()

    def _take(self, message):
        if answer := self._calls.pop(message.get("id"), None):
            if answer.done():
                return
            if "error" in message:
                answer.set_exception(CallFailed(message["error"]["message"]))
            else:
                answer.set_result(message["result"])
        elif handler := self._handlers.get(message.get("method")):
            self._keep(handler(message["params"]))

    def _keep(self, work):
        task = asyncio.create_task(work)
        self._tasks.add(task)
        task.add_done_callback(self._forget)

    def _forget(self, task):
        self._tasks.discard(task)
        if not task.cancelled() and task.exception() and not isinstance(task.exception(), (BrowserGone, CallFailed)):
            raise task.exception()

    def _end(self):
        if not self.ended.done():
            self.ended.set_result(None)
        for answer in self._calls.values():
            if not answer.done():
                answer.set_exception(BrowserGone("it has ended"))
        self._calls.clear()
