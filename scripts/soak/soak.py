"""The run of a soak inside its own world: soak.py SECONDS SEED PROGRAMS FOLDER. scripts/soak.sh starts it."""

import collections
import glob
import random
import statistics
import sys
import time

import peers
from faults import Faults
from stations import Station

MOST_GROWTH = 1.15  # of memory, from the second quarter of the faults to their last
MOST_MB_MORE = 10  # or so many MB, whichever is more


class Watch:
    """Memory and descriptors of Alpha over time."""

    def __init__(self, station):
        self.station = station
        self.readings = []  # (moment, MB, descriptors)
        self.next = 0.0

    def look(self):
        if time.monotonic() < self.next or not self.station.runs_now():
            return
        self.next = time.monotonic() + 2
        try:
            self.readings.append((time.monotonic(), *self.station.figures()))
        except OSError:
            pass  # it has just ended

    def between(self, start, end):
        return [reading for reading in self.readings if start <= reading[0] < end]


def wait(seconds, faults, watch, every=None):
    """Lets `seconds` pass; a fault comes about `every` so many seconds."""
    end = time.monotonic() + seconds
    next_fault = time.monotonic()
    while time.monotonic() < end:
        if every and time.monotonic() >= next_fault:
            faults.bring()
            next_fault = time.monotonic() + faults.dice.uniform(0.3, 2 * every)
        faults.undo_due()
        watch.look()
        for station in faults.stations:
            if not station.runs_now() and station.process.returncode not in (0, -9):
                faults.restart(station)  # counts it
        time.sleep(0.05)


def check_logs(station):
    """What is wrong with the strike logs of a station, and how many lines a full disk has cost."""
    wrong = []
    logged, odd = station.logged()
    if odd:
        wrong.append(f"{station.name}: {len(odd)} lines of its logs are no strikes, such as {odd[0][:80]!r}")
    missing = collections.Counter(line for _, line in station.printed) - collections.Counter(logged)
    excused = 0
    for moment, line in station.printed:
        if missing[line] > 0 and station.was_full(moment):
            missing[line] -= 1
            excused += 1
    lost = +missing
    if lost:
        wrong.append(f"{station.name}: {lost.total()} strikes printed but not logged, such as {next(iter(lost))}")
    more = collections.Counter(logged) - collections.Counter(line for _, line in station.printed)
    if more.total() > station.kills:  # a kill may fall between log and print
        wrong.append(f"{station.name}: {more.total()} strikes logged but not printed, {station.kills} kills")
    return wrong, excused


def check_growth(watch, begin, end, calm_from):
    """Whether Alpha holds more at the end than it should, with the figures."""
    span = end - begin
    early = [mb for _, mb, _ in watch.between(begin + span / 4, begin + span / 2)]
    late = [mb for _, mb, _ in watch.between(begin + 3 * span / 4, end)]
    first = [count for _, _, count in watch.between(begin - 10, begin)]
    last = [count for _, _, count in watch.between(calm_from, end * 2)]
    if not (early and late and first and last):
        return ["Alpha was not seen long enough"], ""
    wrong = []
    limit = max(max(early) * MOST_GROWTH, max(early) + MOST_MB_MORE)
    if statistics.median(late) > limit:
        wrong.append(f"Alpha grows: {max(early):.0f} MB early, {statistics.median(late):.0f} MB late")
    if min(last) > max(first) + 2:
        wrong.append(f"Alpha keeps descriptors: {max(first)} before the faults, {min(last)} behind them")
    figures = (f"Alpha: memory at most {max(early):.0f} MB in the second quarter of the faults, in the middle "
               f"{statistics.median(late):.0f} MB and at most {max(late):.0f} MB in the last; descriptors {max(first)} before "
               f"the faults, {min(last)} behind them, at most {max(count for _, _, count in watch.readings)}")
    return wrong, figures


def main():
    seconds, seed, bin_dir, demo = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3], sys.argv[4]
    addresses = {"Alpha": "127.0.0.1", "Bravo": "127.0.0.2", "Charlie": "127.0.0.3"}
    stations = [Station(name, address, bin_dir, demo) for name, address in addresses.items()]
    faults = Faults(stations, random.Random(seed), demo)
    watch = Watch(stations[0])
    peers.serve(seed)
    for station in stations:
        station.start()
    warm_up = min(60, seconds / 5)
    calm = min(180, seconds / 5)
    wait(warm_up, faults, watch)
    faults.keep_good()
    begin = time.monotonic()
    wait(seconds - warm_up - calm, faults, watch, every=3)
    end = time.monotonic()
    faults.undo_due(everything=True)
    wait(calm, faults, watch)
    calm_from = end + calm / 2

    wrong = list(faults.bad_ends)
    for station in stations:
        code = station.stop() if station.runs_now() else station.process.returncode
        if code != 0:
            wrong.append(f"{station.name} ended with {code} at the end")
        if not station.stop_recorder():
            wrong.append(f"{station.name}: its recorder does not end")
    reports = sorted(glob.glob(f"{demo}/sanitizer.txt*"))
    for report in reports:
        with open(report, encoding="utf-8", errors="replace") as file:
            text = file.read()
        telling = [line for line in text.splitlines() if "ERROR" in line or "error:" in line]
        wrong.append(f"sanitizer report {report}: {telling[:1]}")
    lines = []
    for station in stations:
        station_wrong, excused = check_logs(station)
        wrong += station_wrong
        lines.append(f"{station.name}: {len(station.printed)} strikes in {station.runs} runs, {station.kills} kills; "
                     f"{len(station.fixes)} located, {sum(m > end for m in station.fixes)} behind the last fault; "
                     f"{excused} not logged while the disk was full")
    if not stations[0].fixes:
        wrong.append("Alpha has located nothing")
    growth, figures = check_growth(watch, begin, end, calm_from)
    wrong += growth
    print(f"{sum(faults.counts.values())} faults: "
          + ", ".join(f"{name} {count}" for name, count in sorted(faults.counts.items())))
    print("\n".join(lines + [figures]))
    print("\n".join("WRONG: " + text for text in wrong) if wrong else "All was well.")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
