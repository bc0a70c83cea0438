#!/usr/bin/python3
"""The detector against the same detection written with NumPy and SciPy, on the same recordings in one run.

    bench/compare_scipy.py DETECT_RECORDING FILE.wav...

Prints a Markdown table: processor time of both, as whole processes and for reading and detection alone, peak memory, and
how far the results lie apart. Exit code 1 when they differ: in number, sample numbers or points of the fit at all, in
bearing, strength or fit error by more than 1e-6.

    bench/compare_scipy.py --scipy FILE.wav

is that other way by itself: each frame's work is done by whole-array operations, and Python runs once for each pulse.
"""
import argparse
import csv
import io
import os
import statistics
import subprocess
import sys
import tempfile
import time

import numpy as np
from scipy.io import wavfile
from scipy.signal import lfilter

THRESHOLD = 324  # raw units, 80 dB below the reference
CLIPPING = 32500
WINDOW = 99
REFERENCE = 32768 * 99
TAPS = np.tile([0.125, -0.125], 4)
CHUNK = 1 << 18  # frames; smaller ones are slower, larger ones take more memory
AHEAD = 1 << 15  # frames beyond a chunk in which a pulse must end
REPETITIONS = 3
TOLERANCE = 1e-6


def shaped(frames, first, last):
    """Both channels behind the filter, frames `first` to `last`."""
    behind = max(first - len(TAPS) + 1, 0)
    filtered = lfilter(TAPS, 1.0, frames[behind:last].astype(np.float64), axis=0)
    return filtered[first - behind :]


def regression(n, x, xx, y, xy):
    d = n * xx - x * x
    return (1e9, 0.0) if d == 0 else ((n * xy - y * x) / d, (xx * y - xy * x) / d)


def fitted(x, y):
    """The line y = a x + b through the points, by the better conditioned of the two regressions."""
    n, sx, sy = len(x), x.sum(), y.sum()
    if n == 1:
        return (sy / sx if sx != 0 else 0.0), 0.0
    sxx, syy, sxy = x @ x, y @ y, x @ y
    a, b = regression(n, sx, sxx, sy, sxy)
    a2, b2 = regression(n, sy, syy, sx, sxy)
    return (1 / a2, -b2 / a2) if abs(a2) < abs(a) and a2 != 0 else (a, b)


def fit_error(x, y, a, b):
    x, y = x[1:], y[1:]
    farthest = np.sqrt((x * x + y * y).max())
    if a == 0:
        return 0.0
    return 100 * np.abs(a * x - y + b).max() / np.sqrt(a * a + 1) / farthest


def pulse_end(envelope):
    """The last frame of the pulse that begins with the first one."""
    length = 256
    while True:
        e = envelope[:length]
        peak = np.maximum.accumulate(e)
        faded = (e <= 0.3 * peak) | (e <= THRESHOLD)
        faded[: WINDOW - 1] = False
        end = int(faded.argmax()) if len(e) >= WINDOW else 0
        if end > 0:
            return end, peak
        if length >= len(envelope):
            return None, peak
        length *= 4


def measured(signal, envelope, end, peak):
    """Bearing, strength, points of the fit and its error of a pulse that ends with frame `end`."""
    e, peak = envelope[: end + 1], peak[: end + 1]
    ns, ew = signal[: end + 1, 0], signal[: end + 1, 1]
    above = e >= THRESHOLD
    fits = np.where(above, e < CLIPPING, np.arange(end + 1) < 4)
    x, y = ew[fits][-WINDOW:], ns[fits][-WINDOW:]
    a, b = fitted(x, y)
    # The frame that set the peak, among those that are not clipped; the first one counts in any case.
    rises = np.flatnonzero((e[1:] > peak[:-1]) & (e[1:] < CLIPPING))
    top = rises[-1] + 1 if len(rises) else 0
    # The angle from east exceeds half a turn; by the station's own pi straight west does and straight south does not.
    half = 180 if ns[top] < 0 and ew[top] != 0 or ns[top] == 0 and ew[top] < 0 else 0
    area = (e[above] - THRESHOLD).sum() + e[0] - THRESHOLD
    strength = 20 * np.log10(area / REFERENCE) if area > 0 else -100.0
    return 90 - np.degrees(np.arctan(a)) + half, strength, len(x), fit_error(x, y, a, b)


def pulses(frames):
    busy = 0  # the first frame that may begin a pulse
    for first in range(0, len(frames), CHUNK):
        signal = shaped(frames, first, min(first + CHUNK + AHEAD, len(frames)))
        envelope = np.sqrt(np.einsum("ij,ij->i", signal, signal))
        loud = np.flatnonzero(envelope[:CHUNK] > THRESHOLD)
        at = np.searchsorted(loud, busy - first)
        while at < len(loud):
            begin = loud[at]
            end, peak = pulse_end(envelope[begin:])
            if end is None:
                return  # it has not ended when the recording does
            yield first + begin + 1, *measured(signal[begin:], envelope[begin:], end, peak)
            busy = first + begin + end + 1
            at = np.searchsorted(loud, busy - first)


def run_scipy(name):
    start = time.process_time()
    found = list(pulses(wavfile.read(name, mmap=True)[1]))
    took = time.process_time() - start
    for pulse in found:
        print("%d,%.17g,%.17g,%d,%.17g" % pulse)
    with open("/proc/self/status", encoding="ascii") as status:
        peak = next(line.split()[1] for line in status if line.startswith("VmHWM"))
    print(f"{took:.6f} {peak}", file=sys.stderr)


def run(command):
    """A run: its pulses, the processor time that reading and detection took, its peak memory, the process's time."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        process = subprocess.Popen(command, stdout=out, stderr=err)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        out.seek(0)
        err.seek(0)
        if process.returncode:
            sys.exit(f"{command[0]}: {err.read().decode()}")
        rows = np.array([[float(cell) for cell in row] for row in csv.reader(io.TextIOWrapper(out))])
        took, peak = err.read().split()
        return rows, float(took), float(peak) / 1024, usage.ru_utime + usage.ru_stime


def apart(ours, theirs):
    """How far the results lie apart, as text, and whether they count as equal."""
    if len(ours) != len(theirs):
        return f"{len(ours)} and {len(theirs)} strikes", False
    same = bool((ours[:, [0, 3]] == theirs[:, [0, 3]]).all())
    off = np.abs(ours - theirs).max(axis=0)
    text = f"{'the same' if same else 'different'} sample numbers and points; bearings within {off[1]:.0e} degrees, "
    text += f"strengths within {off[2]:.0e} dB, fit errors within {off[4]:.0e} %"
    return text, same and bool((off[[1, 2, 4]] <= TOLERANCE).all())


def compare(program, name):
    frames = len(wavfile.read(name, mmap=True)[1])
    runs = [(run([program, name]), run([sys.executable, __file__, "--scipy", name])) for _ in range(REPETITIONS)]
    text, equal = apart(runs[0][0][0], runs[0][1][0])

    def median(side, figure):
        return statistics.median(pair[side][figure] for pair in runs)

    def ratio(figure):
        return statistics.median(pair[1][figure] / pair[0][figure] for pair in runs)

    print(f"| {frames / 22050 / 60:.0f} minutes, {len(runs[0][0][0])} strikes | {median(0, 1):.2f} s | {median(1, 1):.2f} s "
          f"| **{ratio(1):.0f}** | {ratio(3):.0f} | {median(0, 2):.0f} MB | {median(1, 2):.0f} MB | {text} |")
    return equal


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--scipy", metavar="FILE", help="detect with NumPy and SciPy alone")
    parser.add_argument("program", nargs="?")
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()
    if options.scipy:
        run_scipy(options.scipy)
        return 0
    if not options.files:
        parser.error("needs the program and recordings")
    print("| recording | here | NumPy, SciPy | times as fast | whole process | memory here | NumPy, SciPy | results |")
    print("|---|---:|---:|---:|---:|---:|---:|---|")
    return 0 if all([compare(options.program, name) for name in options.files]) else 1


if __name__ == "__main__":
    sys.exit(main())
