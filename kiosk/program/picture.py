"""The last picture of the show, kept in a file over restarts."""

import base64
import os
from datetime import datetime
from pathlib import Path


class Picture:
    """A JPEG file, replaced whole, so that a loss of power leaves the old one or the new one."""

    def __init__(self, file):
        self._file = Path(file)

    def keep(self, jpeg: bytes):
        """Writes it, unless it is the one that is kept."""
        if self._read() == jpeg:
            return
        fresh = self._file.with_suffix(".new")
        with open(fresh, "wb") as file:
            file.write(jpeg)
            file.flush()
            os.fsync(file.fileno())
        os.replace(fresh, self._file)

    def taken(self):
        """When, or nothing where there is none that can be read: the show goes on without."""
        try:
            return datetime.fromtimestamp(self._file.stat().st_mtime)
        except OSError:
            return None

    def as_url(self):
        """The picture itself as an address, or nothing."""
        jpeg = self._read()
        return "data:image/jpeg;base64," + base64.b64encode(jpeg).decode() if jpeg else None

    def _read(self):
        try:
            return self._file.read_bytes()
        except OSError:
            return None
