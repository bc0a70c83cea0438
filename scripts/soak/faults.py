"""What happens to the stations of a soak, by the dice."""

import heapq
import itertools
import os
import shutil
import signal
import subprocess
import time

import peers
from stations import command_of

STATE_FILES = ["StationList.dat", "pMA.dat", "pXY.dat", "ClockDrift.dat", "veltrix.ini", "picture5.bmp", "MAP_2000.BMP",
               "MAP_2000.dat", "IgnoreList.txt"]


class Faults:
    """Brings a fault when asked; undoes each in its time. Alpha is never ended, so that its growth can be seen."""

    def __init__(self, stations, dice, demo):
        self.stations = stations
        self.dice = dice
        self.good = f"{demo}/good"
        self.log = open(f"{demo}/faults.txt", "w", encoding="utf-8", buffering=1)
        self.pending = []  # (moment, number, what undoes a fault)
        self.numbers = itertools.count()
        self.counts = {}
        self.bad_ends = []
        self.begin = time.monotonic()
        self.kinds = [self.kill_recorder, self.second_recorder, self.kill_station, self.end_station, self.cut, self.visit,
                      self.visit, self.damage, self.damage, self.step_clock, self.fill_disk, self.odd_hosts,
                      self.operate, self.sleep]

    def keep_good(self):
        """Keeps the state files as they are, for the user who puts them back."""
        for station in self.stations:
            os.makedirs(f"{self.good}/{station.name}", exist_ok=True)
            for name in STATE_FILES:
                if os.path.exists(f"{station.folder}/{name}"):
                    shutil.copy(f"{station.folder}/{name}", f"{self.good}/{station.name}/{name}")

    def bring(self):
        """One fault to one station."""
        fault = self.dice.choice(self.kinds)
        station = self.dice.choice(self.stations)
        if not station.runs_now() and fault != self.damage:
            return
        self.counts[fault.__name__] = self.counts.get(fault.__name__, 0) + 1
        try:
            detail = fault(station)
        except OSError as error:  # the process or file has just gone
            detail = error
        self.tell(station, fault.__name__, detail)

    def tell(self, station, what, detail):
        self.log.write(f"{time.monotonic() - self.begin:8.1f} {station.name} {what} {detail or ''}\n")

    def later(self, seconds, action):
        heapq.heappush(self.pending, (time.monotonic() + seconds, next(self.numbers), action))

    def undo_due(self, everything=False):
        """Undoes what is due."""
        while self.pending and (everything or self.pending[0][0] <= time.monotonic()):
            heapq.heappop(self.pending)[2]()

    def restart(self, station):
        """Starts a station that is down, and looks whether it stays."""
        if station.runs_now():
            return
        if station.process is not None and station.process.returncode not in (0, -9):
            self.bad_ends.append(f"{station.name} ended with {station.process.returncode}")
        station.start()

    def kill_recorder(self, station):
        """It is started again by hand, with the options it had."""
        for pid in station.recorders():
            command = command_of(pid)
            if not command:
                continue
            os.kill(pid, signal.SIGKILL)
            command[0] = f"{station.bin}/SndInput"
            self.later(self.dice.uniform(0.2, 8), lambda c=command: station.start_recorder(c))

    def second_recorder(self, station):
        """Started while one runs, which has to give way."""
        for command in filter(None, map(command_of, station.recorders()[:1])):
            command[0] = f"{station.bin}/SndInput"
            station.start_recorder(command)

    def kill_station(self, station):
        if station.name == "Alpha":
            return "not"
        station.kill()
        self.later(self.dice.choice([0, 0.3, 3]), lambda: self.restart(station))
        return ""

    def end_station(self, station):
        if station.name == "Alpha":
            return "not"
        code = station.stop()
        if code != 0:
            self.bad_ends.append(f"{station.name} ended with {code} when asked to")
        self.later(self.dice.choice([0, 2]), lambda: self.restart(station))
        return f"code {code}"

    def cut(self, station):
        """All connections at once, as after a new address of the router."""
        with open(f"{station.folder}/routeripchanged.txt", "w", encoding="ascii"):
            pass

    def visit(self, station):
        seconds = self.dice.uniform(0, 20)
        peers.visit(station.address, self.dice.random(), seconds)
        return f"{seconds:.1f} s"

    def damage(self, station):
        """A state file as a crash, an editor or a bad disk leaves it; the good one comes back later."""
        name = self.dice.choice(STATE_FILES)
        path = f"{station.folder}/{name}"
        kind = self.dice.choice(["cut", "spoil", "junk", "append", "empty", "delete", "replace"])
        try:
            content = bytearray()
            if os.path.exists(path):
                with open(path, "rb") as file:
                    content += file.read()
            if kind == "cut":
                content = content[: self.dice.randrange(len(content) + 1)]
            elif kind == "spoil":
                for _ in range(max(3, len(content) // 1000) if content else 0):
                    content[self.dice.randrange(len(content))] = self.dice.randrange(256)
            elif kind in ("junk", "replace"):
                content = self.dice.randbytes(self.dice.choice([1, 100, 100000]))
            elif kind == "append":
                content += peers.junk(self.dice, 1000)
            if kind == "delete":
                if os.path.exists(path):
                    os.remove(path)
            else:
                target = path + ".other" if kind == "replace" else path
                with open(target, "wb") as file:
                    file.write(b"" if kind == "empty" else content)
                if kind == "replace":
                    os.replace(target, path)
        except OSError as error:  # no room, for instance
            return f"{name} {kind}: {error}"
        if name == "veltrix.ini" and station.name != "Alpha" and station.runs_now():
            station.kill()  # the next run reads it
            self.later(0, lambda: self.restart(station))
        self.later(self.dice.uniform(5, 40), lambda: self.put_back(station, name))
        return f"{name} {kind}"

    def put_back(self, station, name):
        good = f"{self.good}/{station.name}/{name}"
        try:
            if os.path.exists(good):
                shutil.copy(good, f"{station.folder}/{name}")
        except OSError:
            self.later(5, lambda: self.put_back(station, name))
            return
        if name == "veltrix.ini" and station.name != "Alpha":
            if station.runs_now():
                station.kill()
            self.restart(station)

    def step_clock(self, station):
        step = self.dice.choice([3600, -3600, 86400, -86400, 1, -1, 0.4, 7 * 86400])
        station.step_clock(step)
        self.later(self.dice.uniform(3, 40), lambda: station.step_clock(0))
        return f"{step} s"

    def fill_disk(self, station):
        path = f"{station.folder}/filler.bin"
        start = time.monotonic()
        try:
            with open(path, "ab", buffering=0) as file:
                while True:
                    file.write(bytes(65536))
        except OSError:
            pass
        window = [start, float("inf")]
        station.full.append(window)

        def empty():
            if os.path.exists(path):
                os.remove(path)
            window[1] = time.monotonic()

        self.later(self.dice.uniform(2, 20), empty)

    def odd_hosts(self, station):
        """Names in the station list that nobody resolves."""
        hosts = ["no.such.host.invalid", "a" * 300, "..", "-", "127.0.0.99", "1.2.3", "::1", "host name", "\xe4\xf6.invalid"]
        try:
            with open(f"{station.folder}/StationList.dat", "a", encoding="utf-8") as file:
                for row in range(3):
                    host = self.dice.choice(hosts)
                    file.write(f"Station {row + 40}; 10.0{row}; 50.0; ; ; {host}; Odd {row}; 0; 1; 0;\n")
        except OSError as error:
            return error
        return ""

    def operate(self, station):
        """Clicks and texts of a user in a hurry."""
        if station.asleep:
            return "not"
        requests = [["list"], ["get", "lstOnline"], ["set", "txtAge", "x" * 5000], ["set", "txtAge", "30"],
                    ["click", "cmdResetCorr"], ["set", "txtTresholdQuotient", "-9e99"], ["nonsense"], ["get"],
                    ["save", "Picture4", f"{station.folder}/saved.bmp"], ["click", "Picture1"], ["click", "Picture4"]]
        for _ in range(5):
            try:
                subprocess.run([f"{station.bin}/veltrix-ctl", "--control", station.control, *self.dice.choice(requests)],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=30, check=False)
            except subprocess.TimeoutExpired:
                return "no answer"
        return ""

    def sleep(self, station):
        station.sleep(awake=False)

        def wake():
            if station.runs_now():
                station.sleep(awake=True)

        self.later(self.dice.uniform(1, 10), wake)
