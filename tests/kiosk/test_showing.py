"""A screen machine and its show: what is seen while either is away, and after the browser has failed."""

import asyncio
import os
import tempfile
import threading
import unittest
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

import hours
from browser import Browser, BrowserGone
from stage import Screen, Show, until

TEXT = "document.body.innerText"


class Showing(unittest.IsolatedAsyncioTestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    async def asyncSetUp(self):
        asyncio.get_running_loop().set_debug(False)  # it would tell of every moment that the machine is busy

    def show(self):
        show = Show(self.folder)
        self.addCleanup(show.stop)
        return show

    def serve(self, handler):
        server = ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}/"

    async def test_waits_for_a_server_that_was_never_seen_and_shows_it_when_it_comes(self):
        show = self.show()
        show.stop()
        async with Screen(self.folder, urls=(show.url + "#token=secret",)) as screen:
            await screen.sees(f"{TEXT}.includes('Waiting for {show.url}')")
            text = await screen.sees(TEXT)
            self.assertIn("ConnectionRefused", text)
            self.assertNotIn("secret", text)
            show.start()
            await until("the show", lambda: screen.said("shows http"), lambda: screen.clock.move(1))
            await screen.sees_slide()

    async def test_a_machine_that_starts_without_its_server_shows_the_last_picture(self):
        show = self.show()
        async with Screen(self.folder, urls=(show.url,)) as screen:
            await screen.sees_slide()
            await screen.browser.look("document.documentElement.style.filter = 'hue-rotate(0deg)'")
        show.stop()
        async with Screen(self.folder, urls=(show.url,)) as screen:
            # Where it asks the server, this stands already.
            await screen.sees("document.images[0]?.naturalWidth > 0 && document.getElementById('mark').innerText.length === 16")
            await until("the refusal", lambda: 1 in screen.clock.slept)
            await screen.sees("document.images[0]?.naturalWidth > 0")
            show.start()
            await until("the show", lambda: screen.said("shows http"), lambda: screen.clock.move(1))
            await screen.sees_slide()

    async def test_a_page_stands_that_wants_to_load_itself_anew_from_a_server_that_is_away(self):
        show = self.show()
        async with Screen(self.folder, urls=(show.url,)) as screen:
            await screen.sees_slide()
            await screen.browser.look("window.marker = 'first'")
            show.stop()
            await screen.browser.look("location.reload()")
            await until("another try", lambda: 15 in screen.clock.slept)
            self.assertEqual("first", await screen.sees("window.marker"))
            show.start()
            screen.clock.move(15)
            await screen.sees("window.marker === undefined && !!document.querySelector('.slide')")

    async def test_ends_while_a_browser_starts_and_leaves_none(self):
        number = Path(self.folder) / "process"
        command = ["sh", "-c", f"echo $$ >'{number}'; exec sleep 3600"]

        async def start():
            return await Browser.start(command, "about:blank", os.environ, patience=3600)

        async with Screen(self.folder, start=start):
            process = await until("the start", lambda: number.exists() and number.read_text().strip())
        self.assertFalse(Path("/proc", process).exists())

    async def test_answers_that_are_errors_are_not_shown_and_the_next_address_is_tried(self):
        class Failing(BaseHTTPRequestHandler):
            def do_GET(self):
                self.send_error(503, "Bad Gateway")

            def log_message(self, *_):
                pass

        failing = self.serve(Failing)
        async with Screen(self.folder, urls=(failing,)) as screen:
            text = await screen.sees(f"{TEXT}.includes('Waiting') && {TEXT}")
            self.assertIn("it answers 503", text)
            self.assertNotIn("Bad Gateway", text)
        async with Screen(self.folder, urls=(failing, self.show().url)) as screen:
            await screen.sees_slide()

    async def test_a_page_whose_scripts_did_not_come_is_loaded_anew(self):
        class WithoutScriptAtFirst(BaseHTTPRequestHandler):
            asked = 0

            def do_GET(self):
                is_script = self.path == "/script.js"
                WithoutScriptAtFirst.asked += is_script
                self.send_response(503 if is_script and self.asked == 1 else 200)
                self.send_header("Content-Type", "text/javascript" if is_script else "text/html")
                self.end_headers()
                self.wfile.write(b"window.ran = true" if is_script else b"<p>a slide<script type=module src=/script.js></script>")

            def log_message(self, *_):
                pass

        async with Screen(self.folder, urls=(self.serve(WithoutScriptAtFirst),)) as screen:
            await screen.sees(f"{TEXT} === 'a slide'")
            await until("another try", lambda: 15 in screen.clock.slept)
            self.assertEqual(1, WithoutScriptAtFirst.asked)
            screen.clock.move(15)
            await screen.sees("window.ran")

    async def test_a_page_that_hangs_is_replaced_and_one_that_paints_is_not(self):
        show = self.show()
        async with Screen(self.folder, urls=(show.url,)) as screen:
            await screen.sees_slide()
            for _ in range(10):
                frames = screen.frames
                await until("a frame", lambda: screen.frames > frames, lambda: screen.clock.move(1))
            self.assertEqual(1, len(screen.browsers))
            hanging = asyncio.ensure_future(screen.browser.look("for (;;) {}"))
            await until("another browser", lambda: len(screen.browsers) == 2, lambda: screen.clock.move(10))
            self.assertTrue(screen.said("painted nothing for 60 s"))
            with self.assertRaises(BrowserGone):
                await hanging
            await screen.sees_slide()

    async def test_a_crash_brings_another_browser(self):
        show = self.show()
        async with Screen(self.folder, urls=(show.url,)) as screen:
            await screen.sees_slide()
            crash = asyncio.ensure_future(screen.browser.call("Page.crash"))
            await until("another browser", lambda: len(screen.browsers) == 2, lambda: screen.clock.move(1))
            self.assertTrue(screen.said("it has crashed"))
            await screen.sees_slide()
            await screen.browsers[1].kill()
            await until("a third browser", lambda: len(screen.browsers) == 3, lambda: screen.clock.move(1))
            self.assertTrue(screen.said("it has ended"))
            await asyncio.gather(crash, return_exceptions=True)

    async def test_browsers_that_do_not_start_are_tried_with_growing_pauses(self):
        async def start():
            raise BrowserGone("it has ended")

        async with Screen(self.folder, start=start) as screen:
            await until("ten tries", lambda: len(screen.log) == 10, lambda: screen.clock.move(60))
            self.assertEqual([1, 2, 4, 8, 16, 32, 60, 60, 60, 60], screen.clock.slept[:10])

    async def test_the_screen_sleeps_outside_of_its_hours_with_no_browser_left(self):
        show = self.show()
        windows = (hours.parse_window("mon-fri 08:00-09:01"),)
        async with Screen(self.folder, urls=(show.url,), windows=windows) as screen:
            await screen.sees_slide()
            self.assertFalse(screen.console.is_off)
            evening = screen.browser
            await until("the night", lambda: screen.console.is_off, lambda: screen.clock.move(10))
            self.assertTrue(evening.ended.done())
            screen.clock.move(22 * 3600)
            await until("a look at the clock", lambda: screen.clock.slept[-1] == 20)
            self.assertEqual(1, len(screen.browsers))
            screen.clock.move(3600)
            await screen.sees_slide()
            self.assertFalse(screen.console.is_off)
            self.assertEqual(2, len(screen.browsers))

    async def test_what_is_wrong_with_the_settings_stands_on_the_screen(self):
        async with Screen(self.folder, notice="/etc/lumenfold-kiosk.conf:3: <b> is no setting") as screen:
            await screen.sees(f"{TEXT}.includes('/etc/lumenfold-kiosk.conf:3: <b> is no setting')")


if __name__ == "__main__":
    unittest.main()
