"""What a screen shows of its own, while there is no show: its last picture, or who it waits for."""

from html import escape
from urllib.parse import urlsplit

START = "data:text/html,%3Cbody%20style=background:black%3E"

_STYLE = """
html, body { margin: 0; height: 100%; background: black; color: #9a9a9a; cursor: none; overflow: hidden; }
body { font: 2.5vmin/1.6 "Liberation Sans", Arial, sans-serif; display: grid; place-content: center; text-align: center; }
img { position: fixed; inset: 0; width: 100%; height: 100%; object-fit: contain; }
h1 { margin: 0; font-size: 4vmin; font-weight: normal; color: #e6e6e6; }
p { margin: 0; white-space: pre-line; overflow-wrap: anywhere; }
#mark { position: fixed; right: 0; bottom: 0; padding: 0.2em 0.8em; background: #ffb000; color: black; }
"""


def page(*, stale, picture=None, taken=None, title="", text=""):
    """HTML: of `picture`, an address, what `stale` says, with the date when it was `taken`; else the title and the text."""
    if picture and stale != "blank":
        body = f'<img src="{picture}" alt="">'
        if stale == "mark":
            body += f'<p id="mark">{taken:%Y-%m-%d %H:%M}</p>'
    elif picture:
        body = ""
    else:
        body = f"<main><h1>{escape(title)}</h1><p>{escape(text)}</p></main>"
    return f'<!doctype html><html lang="en"><meta charset="utf-8"><style>{_STYLE}</style><body>{body}</body></html>'


def shown_address(url):
    """An address without what may be secret in it: name and password, and what follows the #."""
    parts = urlsplit(url)
    return parts._replace(netloc=parts.netloc.rpartition("@")[2], fragment="").geturl()
