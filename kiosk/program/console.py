"""The text console below the show. While it is blanked with power saving, the kernel switches the display off."""

import fcntl
import os
import sys

# ioctl_console(2): TIOCLINUX and its subcodes; the mode is that of VESA's DPMS.
_TIOCLINUX = 0x541C
_UNBLANK, _SET_BLANK_MODE, _BLANK = 4, 10, 14
_POWER_DOWN = 3


class Console:
    """The console that is this program's standard input. Elsewhere it says once that there is none."""

    def __init__(self, tell):
        self._tell = tell

    def clear(self):
        """Takes texts and the cursor away, as they show between two starts of the browser."""
        if sys.stdin.isatty():
            os.write(sys.stdin.fileno(), b"\033[2J\033[H\033[?25l")

    def switch_off(self):
        self.clear()
        self._control(bytes([_SET_BLANK_MODE, _POWER_DOWN]))
        self._control(bytes([_BLANK]))

    def switch_on(self):
        self._control(bytes([_UNBLANK]))

    def _control(self, request):
        try:
            fcntl.ioctl(sys.stdin.fileno(), _TIOCLINUX, request)
        except OSError as error:
            self._tell(f"the console cannot switch the display: {error.strerror}")
