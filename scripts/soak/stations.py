"""The stations of a soak: started, killed, watched from outside."""

import os
import re
import signal
import subprocess
import threading
import time

STRIKE = re.compile(r"\d{4}/\d\d/\d\d \d\d:\d\d:\d\d,\d{3}\.\d,\d{10},-?\d{3}\.\d,\d{9}$")


def command_of(pid):
    """The words that a process was started with; none when it has gone."""
    try:
        with open(f"/proc/{pid}/cmdline", encoding="utf-8") as file:
            return file.read().rstrip("\0").split("\0")
    except OSError:
        return []


class Station:
    """One station, through all its runs. What it prints is kept with the moment it came."""

    def __init__(self, name, address, bin_dir, demo):
        self.name = name
        self.address = address
        self.bin = bin_dir
        self.folder = f"{demo}/{name}"
        self.control = f"{demo}/{name}.control"
        self.clock = f"{demo}/{name}.clock"
        self.errors = f"{demo}/{name}.errors.txt"
        self.printed = []  # (monotonic moment, line) of each detection
        self.fixes = []  # moments of located strikes
        self.runs = 0
        self.kills = 0
        self.full = []  # [from, to] of each time without room on its disk
        self.process = None
        self.reader = None
        self.asleep = False
        self.preload = f"{demo}/clock_shift.so"
        self.step_clock(0)

    def start(self):
        environment = dict(os.environ, LD_PRELOAD=self.preload, CLOCK_SHIFT=self.clock,
                           SNDINPUT_SOURCE=f"storm:demo,{self.name}")
        with open(self.errors, "ab") as errors:
            self.process = subprocess.Popen(
                [f"{self.bin}/veltrix", "--headless", "--print", "detections", "--dir", self.folder, "--settings",
                 f"{self.folder}/veltrix.ini", "--address", self.address, "--control", self.control,
                 "--recorder", f'env -u CLOCK_SHIFT "{self.bin}/SndInput"'],
                stdout=subprocess.PIPE, stderr=errors, env=environment, start_new_session=True)
        self.runs += 1
        self.asleep = False
        self.reader = threading.Thread(target=self._read, args=(self.process.stdout,), daemon=True)
        self.reader.start()

    def _read(self, stream):
        for raw in stream:
            line = raw.decode("utf-8", "replace").rstrip("\n")
            if STRIKE.match(line):
                self.printed.append((time.monotonic(), line))
            elif not line.startswith("Veltrix V"):
                self.fixes.append(time.monotonic())

    def runs_now(self):
        return self.process is not None and self.process.poll() is None

    def kill(self):
        """As a power cut does, for this program."""
        self.kills += 1
        self.process.kill()
        self.process.wait()
        self.reader.join()

    def stop(self, limit=90):
        """Ends it in its order, awake; its exit code, or None when it had to be killed."""
        self.sleep(awake=True)
        self.process.terminate()
        try:
            code = self.process.wait(limit)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            code = None
        self.reader.join()
        return code

    def step_clock(self, seconds):
        with open(self.clock + ".new", "w", encoding="ascii") as file:
            file.write(f"{seconds}\n")
        os.replace(self.clock + ".new", self.clock)

    def recorders(self):
        """Process numbers of its recorders."""
        found = []
        for entry in os.listdir("/proc"):
            try:
                if entry.isdigit() and os.readlink(f"/proc/{entry}/exe").endswith("/SndInput") \
                        and os.readlink(f"/proc/{entry}/cwd") == self.folder:
                    found.append(int(entry))
            except OSError:
                continue
        return found

    def start_recorder(self, command):
        environment = dict(os.environ, LD_PRELOAD=self.preload, SNDINPUT_SOURCE=f"storm:demo,{self.name}")
        subprocess.Popen(command, cwd=self.folder, env=environment, stdout=subprocess.DEVNULL,
                         stderr=subprocess.DEVNULL, start_new_session=True)

    def stop_recorder(self, limit=30):
        """Asks its recorders to end; False when one does not."""
        commands = [command for command in map(command_of, self.recorders()) if command]
        for command in commands:
            block = [option for option in command if option.startswith("/of=")]
            subprocess.run([f"{self.bin}/SndInput", "/stop", *block], cwd=self.folder, check=False, timeout=60,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        end = time.monotonic() + limit
        while self.recorders() and time.monotonic() < end:
            time.sleep(0.1)
        return not self.recorders()

    def figures(self):
        """Memory in MB and descriptors of the running program."""
        pid = self.process.pid
        with open(f"/proc/{pid}/statm", encoding="ascii") as file:
            pages = int(file.read().split()[1])
        return pages * os.sysconf("SC_PAGE_SIZE") / 1e6, len(os.listdir(f"/proc/{pid}/fd"))

    def logged(self):
        """All lines of its strike logs, and those among them that are none."""
        lines = []
        data = f"{self.folder}/Data"
        for name in sorted(os.listdir(data)) if os.path.isdir(data) else []:
            if re.fullmatch(r"\d{8}N\.csv", name):
                with open(f"{data}/{name}", encoding="utf-8", errors="replace") as file:
                    lines += file.read().splitlines()
        return lines, [line for line in lines if not STRIKE.match(line)]

    def was_full(self, moment):
        """Whether its disk was without room then, or a little before or behind."""
        return any(start - 1 <= moment <= end + 2 for start, end in self.full)

    def sleep(self, awake):
        """Lets it stand still, as when the computer sleeps, or go on."""
        self.asleep = not awake
        self.process.send_signal(signal.SIGCONT if awake else signal.SIGSTOP)
