"""When a screen is on: days of the week and times of day, local time."""

import re
from dataclasses import dataclass
from datetime import datetime, time, timedelta

DAYS = ("mon", "tue", "wed", "thu", "fri", "sat", "sun")
MIDNIGHT = time(0)


@dataclass(frozen=True)
class Window:
    """From one time to another on some days; one that ends before it begins goes on into the next day."""

    days: frozenset
    begin: time
    end: time

    def includes(self, moment: datetime) -> bool:
        now = moment.time()
        today = moment.weekday() in self.days
        if self.begin < self.end:
            return today and self.begin <= now < self.end
        yesterday = (moment - timedelta(days=1)).weekday() in self.days
        return (today and now >= self.begin) or (yesterday and now < self.end)


def is_on(windows, moment: datetime) -> bool:
    """Without any window it is always on."""
    return not windows or any(window.includes(moment) for window in windows)


def parse_window(text: str) -> Window:
    """Of "mon-fri 06:00-22:00" or "sat,sun 08:00-24:00", or without days for every day; ValueError says what is wrong."""
    *days, times = text.lower().split() or [""]
    if len(days) > 1:
        raise ValueError(f'"{text}" has more than days and times, as in "mon-fri 06:00-22:00"')
    found = re.fullmatch(r"(\d{1,2}:\d\d)-(\d{1,2}:\d\d)", times)
    if not found:
        raise ValueError(f'"{times}" is no span of time like 06:00-22:00')
    begin, end = (_parse_time(each) for each in found.groups())
    return Window(_parse_days(days[0]) if days else frozenset(range(7)), begin, end)


def _parse_time(text: str) -> time:
    hour, minute = map(int, text.split(":"))
    if (hour, minute) == (24, 0):
        return MIDNIGHT
    if hour > 23 or minute > 59:
        raise ValueError(f'"{text}" is no time of day')
    return time(hour, minute)


def _parse_days(text: str) -> frozenset:
    days = set()
    for part in text.split(","):
        first, _, last = part.partition("-")
        for day in (first, last or first):
            if day not in DAYS:
                raise ValueError(f'"{day}" is no day; days are {" ".join(DAYS)}')
        begin, end = DAYS.index(first), DAYS.index(last or first)
        days.update((begin + i) % 7 for i in range((end - begin) % 7 + 1))
    return frozenset(days)
