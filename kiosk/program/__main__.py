"""lumenfold-kiosk [--check] [FILE]: shows what FILE (/etc/lumenfold-kiosk.conf) says, full screen, until it is stopped.
With --check it only says what is wrong with the file."""

import argparse
import asyncio
import os
import shutil
import signal
import socket
import sys
from pathlib import Path

import local_page
from browser import Browser
from configuration import Configuration, ConfigurationError, read
from console import Console
from kiosk import Clock, Kiosk
from picture import Picture

BROWSER = [
    "chromium", "--kiosk", "--ozone-platform=wayland", "--remote-debugging-pipe",
    "--no-first-run", "--no-default-browser-check", "--noerrdialogs", "--disable-session-crashed-bubble",
    # Pages of its own that nobody sees take longer to start than the show's.
    "--disable-extensions", "--disable-component-extensions-with-background-pages",
    "--disable-features=WebUIOmniboxPopup,WebUIOmniboxAimPopup",
    "--disable-background-networking", "--disable-component-update", "--disable-sync", "--disable-translate",
    "--disable-pinch", "--overscroll-history-navigation=0", "--password-store=basic",
    "--autoplay-policy=no-user-gesture-required",
]


def command_line(configuration, profile):
    """What shows a browser full screen: a compositor for one window, and the browser in it."""
    turns = ["-r"] * (configuration.rotation // 90)
    outputs = ["-m", {"all": "extend", "last": "last"}[configuration.outputs]]
    return ["cage", *turns, *outputs, "--", *BROWSER, f"--user-data-dir={profile}", *configuration.browser]


def notify(message):
    """Tells the service manager, if there is one (sd_notify(3))."""
    address = os.environ.get("NOTIFY_SOCKET")
    if address:
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as line:
            line.connect("\0" + address[1:] if address.startswith("@") else address)
            line.send(message.encode())


async def feed_watchdog():
    """Half as often again as it has to be, while this program's loop turns."""
    limit = int(os.environ.get("WATCHDOG_USEC", "0")) / 1e6
    while limit:
        notify("WATCHDOG=1")
        await asyncio.sleep(limit / 3)


def tell(line):
    print(line, file=sys.stderr, flush=True)
    # A message that is too long for the manager's socket would be an error.
    notify("STATUS=" + line.replace("\n", "; ")[:1000])


async def show(configuration, notice):
    cache = Path(os.environ.get("CACHE_DIRECTORY", "/var/cache/lumenfold-kiosk"))
    profile = cache / "profile"
    # Screens have no keyboard and no mouse, which the compositor would miss.
    environment = {**os.environ, "WLR_LIBINPUT_NO_DEVICES": "1"}

    async def start():
        # Of a browser that was switched off while it wrote nothing is taken over.
        shutil.rmtree(profile, ignore_errors=True)
        return await Browser.start(command_line(configuration, profile), local_page.START, environment)

    kiosk = Kiosk(configuration, start=start, picture=Picture(cache / "picture.jpg"), console=Console(tell),
                  clock=Clock, tell=tell, notice=notice)
    loop = asyncio.get_running_loop()
    for number in (signal.SIGTERM, signal.SIGINT):
        loop.add_signal_handler(number, kiosk.stop)
    notify("READY=1")
    watchdog = asyncio.create_task(feed_watchdog())
    try:
        await kiosk.run()
    finally:
        watchdog.cancel()


def main():
    parser = argparse.ArgumentParser(prog="lumenfold-kiosk", description=__doc__.partition(": ")[2])
    parser.add_argument("--check", action="store_true", help="say what is wrong with the file, and end")
    parser.add_argument("file", nargs="?", default="/etc/lumenfold-kiosk.conf")
    options = parser.parse_args()
    notice = ""
    try:
        configuration = read(options.file)
    except ConfigurationError as error:
        tell(str(error))
        if options.check:
            return 1
        # The screen says it as well: nobody looks into the log of a screen.
        configuration, notice = Configuration(), str(error)
    if not options.check:
        asyncio.run(show(configuration, notice))
    return 0


if __name__ == "__main__":
    sys.exit(main())
