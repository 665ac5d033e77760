"""The settings of a screen machine, lines KEY = VALUE of /etc/lumenfold-kiosk.conf."""

from dataclasses import dataclass
from urllib.parse import urlsplit

from hours import Window, parse_window


_MOST_CHARACTERS = 100_000


class ConfigurationError(Exception):
    """What is wrong, a line for each fault, with the file and its line."""


@dataclass(frozen=True)
class Configuration:
    urls: tuple[str, ...] = ()
    """Of the show; the further ones are tried while the first does not answer."""
    windows: tuple[Window, ...] = ()
    """When the screen is on; always without any."""
    rotation: int = 0
    """In degrees, clockwise."""
    outputs: str = "all"
    """`all`: one picture over all that are connected; `last`: on the one connected last."""
    stale: str = "mark"
    """What is made of a picture from before the start: `keep`, `mark` or `blank`."""
    browser: tuple[str, ...] = ()
    """Further options for Chromium."""


def read(path) -> Configuration:
    """The settings in a file; ConfigurationError names all that is wrong with it."""
    try:
        with open(path, encoding="utf-8-sig") as file:
            text = file.read(_MOST_CHARACTERS + 1)
    except OSError as error:
        raise ConfigurationError(f"{path}: {error.strerror}") from error
    except UnicodeDecodeError as error:
        raise ConfigurationError(f"{path}: it is no text in UTF-8") from error
    if len(text) > _MOST_CHARACTERS:
        raise ConfigurationError(f"{path}: it is too long for settings")

    values = {key: [] for key in _PARSERS}
    seen = {}
    faults = []
    for number, line in enumerate(text.splitlines(), 1):
        line = line.strip()
        if not line or line.startswith(("#", ";")):
            continue
        try:
            key, value = _parse_line(line)
            if key in _ONCE and key in seen:
                raise ValueError(f'"{key}" stands in line {seen[key]} already')
            values[key].append(_PARSERS[key](value))
            seen[key] = number
        except ValueError as error:
            faults.append(f"{path}:{number}: {error}")
    if not values["url"] and not faults:
        faults.append(f"{path}: no line says what to show; add one like url = http://boards.example.org:2000/")
    if faults:
        raise ConfigurationError("\n".join(faults))

    single = {field: values[key][0] for key, field in _ONCE.items() if values[key]}
    return Configuration(tuple(values["url"]), tuple(values["on"]), browser=tuple(values["browser"]), **single)


def _parse_line(line):
    key, sign, value = (part.strip() for part in line.partition("="))
    if not sign:
        raise ValueError(f'"{line[:60]}" is no line of the form KEY = VALUE')
    if key not in _PARSERS:
        raise ValueError(f'"{key}" is no setting; settings are {", ".join(_PARSERS)}')
    if not value:
        raise ValueError(f'"{key}" has no value')
    return key, value


def _parse_url(text):
    parts = urlsplit(text)
    if parts.scheme not in ("http", "https") or not parts.hostname:
        # What follows the # may be secret.
        raise ValueError(f'"{text.partition("#")[0]}" is no address that begins with http:// or https:// and a server')
    return text


def _parse_rotation(text):
    if text not in ("0", "90", "180", "270"):
        raise ValueError(f'"{text}" is no rotation; it may be 0, 90, 180 or 270')
    return int(text)


def _parse_option(text):
    if not text.startswith("--"):
        raise ValueError(f'"{text}" is no option of the browser; these begin with --')
    return text


def _one_of(*words):
    def parse(text):
        if text not in words:
            raise ValueError(f'"{text}" is none of {", ".join(words)}')
        return text

    return parse


_PARSERS = {
    "url": _parse_url,
    "on": parse_window,
    "rotate": _parse_rotation,
    "outputs": _one_of("all", "last"),
    "stale": _one_of("keep", "mark", "blank"),
    "browser": _parse_option,
}
_ONCE = {"rotate": "rotation", "outputs": "outputs", "stale": "stale"}
