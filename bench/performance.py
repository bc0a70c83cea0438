#!/usr/bin/python3
"""Measures what docs/performance.md says and writes its tables between their markers; see scripts/performance.sh.

    bench/performance.py BIN_FOLDER DOCUMENT [PART...]
"""
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys
import tempfile
import time

REPETITIONS = 9
SAMPLE_RATE = 22050
BLOCK_FRAMES = 32768

CASES = {
    "quiet": "quiet",
    "three_strikes_a_second": "3 strikes a second",
    "ten_strikes_a_second": "10 strikes a second",
    "twenty_strikes_a_second": "20 strikes a second",
    "no_filter_quiet": "quiet, filter off",
    "no_filter_ten_strikes_a_second": "10 a second, filter off",
    "antenna_turned_quiet": "quiet, antenna inverted and turned",
    "antenna_turned_ten_strikes_a_second": "10 a second, antenna inverted and turned",
    "noise_below_threshold": "threshold at 4 sigma of the noise",
    "noise_at_threshold": "threshold at 3 sigma: noise triggers all the time",
    "noise_above_threshold": "threshold at 2 sigma: noise never lets go",
    "no_scopes_quiet": "quiet, detector alone",
    "no_scopes_ten_strikes_a_second": "10 a second, detector alone",
    "no_scopes_twenty_strikes_a_second": "20 a second, detector alone",
    "no_scopes_noise_at_threshold": "threshold at 3 sigma, detector alone",
    "no_scopes_noise_above_threshold": "threshold at 2 sigma, detector alone",
}

# What, benchmark, its plain way, what that is.
PARTS = [
    ("the line fit, a point more in a full window", "FitUpdateAtAFullWindow", "FitByRecomputing", "all sums anew"),
    ("the median of 1000 values, a value more", "MedianUpdate", "MedianBySorting", "sorted anew"),
    ("a reading of the noise, one frame in a thousand", "NoiseUpdate", None, ""),
    ("a block from its file", "BlockByIntake", "BlockBySingleReads", "a read for each sample"),
    ("the input level of a block", "InputLevelOfABlock", "InputLevelOfABlockPlain", "frame by frame"),
    ("one difference into the sync histogram, with its peak", "HistogramUpdate", "PeakByScan", "a scan of all bins"),
    ("a row of the sync display", "RowOfDisplaySync", "RowBinByBin", "bin by bin"),
    ("2000 dots of the map, one in 20 still bright", "DrawLightningInPicture4/5", "MapOfDotsPlain/5", "every dot painted"),
    ("2000 dots of the map, all bright", "DrawLightningInPicture4/100", "MapOfDotsPlain/100", "every dot painted"),
    ("a place on the map", "ProjectionByCalcMapXY", "ProjectionByGeodesics", "exact geodesics"),
    ("sectors of the map, 1 station", "SectorsFind/1", "SectorsPlain/1", "every station at every pixel"),
    ("sectors of the map, 10 stations", "SectorsFind/10", "SectorsPlain/10", "every station at every pixel"),
    ("sectors of the map, 100 stations", "SectorsFind/100", "SectorsPlain/100", "every station at every pixel"),
    ("the focus of a fix, full ring, dense", "FocusGetFocus/1", "FocusPlain/1", "every record compared"),
    ("the focus of a fix, full ring, scattered", "FocusGetFocus/140", "FocusPlain/140", "every record compared"),
    ("2000 strikes crossed again after a drag", "ReplotOf2000Fixes/20", None, ""),
    ("one publication, four bitmaps written", "Publication", None, ""),
    ("a local detection on polar display and history plot", "LocalDetectionOnBothDisplays", None, ""),
    ("a local detection with two correlated peers: matching, map, displays", "LocalDetectionWithTwoPeers/0/manual_time",
     "DisplaysOfTwoPeersPlain", "the displays alone, plainly"),
    ("a tick without a block", "TickWithoutABlock", None, ""),
    ("a tick with a block of 100 ms", "TickWithABlockOfHundredMilliseconds", None, ""),
]


def read_text(name):
    return pathlib.Path(name).read_text(encoding="utf-8")


def duration(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def machine():
    model = re.search(r"model name\s*: (.*)", read_text("/proc/cpuinfo"))
    compiler = subprocess.run(["c++", "-dumpfullversion"], capture_output=True, text=True, check=True).stdout.strip()
    system = re.search(r'PRETTY_NAME="(.*)"', read_text("/etc/os-release"))[1]
    memory = int(re.search(r"MemTotal:\s*(\d+)", read_text("/proc/meminfo"))[1]) / 1024**2
    return (f"Measured {time.strftime('%Y-%m-%d')} on {model[1] if model else platform.machine()}, {os.cpu_count()} "
            f"processors, {memory:.0f} GB; {system}, g++ {compiler}, release flags. {os.getloadavg()[0]:.1f} processes were waiting for a processor when it began.")


def measured(program, which):
    """The nanoseconds of processor time of each benchmark that the expression finds, the median of all repetitions."""
    command = [program, "--benchmark_format=json", f"--benchmark_repetitions={REPETITIONS}", "--benchmark_min_time=0.02",
               "--benchmark_enable_random_interleaving=true", f"--benchmark_filter={which}"]
    report = json.loads(subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True).stdout)
    units = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    times = {}
    for one in report["benchmarks"]:
        if one["run_type"] == "iteration":
            clock = "real_time" if "manual_time" in one["run_name"] else "cpu_time"
            times.setdefault(one["run_name"], []).append(one[clock] * units[one["time_unit"]])
    return {name: statistics.median(values) for name, values in times.items()}


def sample_loop(times):
    rows = ["| sound | here | plain loop | times as fast | times real time |", "|---|---:|---:|---:|---:|"]
    for case, text in CASES.items():
        here, plain = (times[f"{loop}/{case}"] / BLOCK_FRAMES for loop in ("SampleLoop", "PlainLoop"))
        rows.append(f"| {text} | {here:.2f} ns | {plain:.2f} ns | **{plain / here:.1f}** | {1e9 / SAMPLE_RATE / here:,.0f} |")
    return rows


def parts(times):
    rows = ["| | here | plain way | times as fast |", "|---|---:|---:|---:|"]
    for text, name, plain, what in PARTS:
        if name not in times:
            continue
        ratio = f"**{times[plain] / times[name]:.1f}**" if plain else ""
        other = f"{duration(times[plain])}, {what}" if plain else ""
        rows.append(f"| {text} | {duration(times[name])} | {other} | {ratio} |")
    return rows


def commands(folder, recordings):
    """Processor time of whole programs on recordings, the median of some runs."""
    rows = ["| command | processor time | times real time |", "|---|---:|---:|"]
    for name, seconds in recordings.items():
        times = []
        for _ in range(3):
            before = os.times()
            subprocess.run([f"{folder}/veltrix-replay", name], stdout=subprocess.DEVNULL, check=True)
            after = os.times()
            times.append(after.children_user + after.children_system - before.children_user - before.children_system)
        took = statistics.median(times)
        rows.append(f"| `veltrix-replay` of {seconds // 60} minutes of WAV | {took:.2f} s | {seconds / took:,.0f} |")
    return rows


def recordings(folder, scratch):
    lengths = {f"{scratch}/ten.wav": 600, f"{scratch}/hour.wav": 3600}
    for name, seconds in lengths.items():
        subprocess.run([f"{folder}/veltrix-storm", "demo", "--station", "Alpha", "--from", "2026-11-21T06:00:00Z",
                        "--seconds", str(seconds), "--out", name], check=True)
    return lengths


def lines_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout.rstrip().split("\n")


def write(document, part, lines):
    """Puts the lines between the part's markers."""
    text = read_text(document)
    begin, end = f"<!-- {part} -->\n", f"<!-- end of {part} -->"
    head, rest = text.split(begin)
    text = head + begin + "\n" + "\n".join(lines) + "\n\n" + end + rest.split(end)[1]
    pathlib.Path(document).write_text(text, encoding="utf-8")
    print(f"\n{part}:", *lines, sep="\n", flush=True)


def main(folder, document, *chosen):
    def wants(part):
        return not chosen or part in chosen

    if wants("machine"):
        write(document, "machine", [machine()])
    if wants("loop"):
        write(document, "loop", sample_loop(measured(f"{folder}/veltrix_bench", "Loop/")))
    if wants("parts"):
        write(document, "parts", parts(measured(f"{folder}/veltrix_bench", "-Loop/")))
    if wants("storm"):
        write(document, "storm", lines_of(f"{folder}/storm_hour")[1:])
    if wants("commands") or wants("scipy"):
        with tempfile.TemporaryDirectory() as scratch:
            sounds = recordings(folder, scratch)
            if wants("commands"):
                write(document, "commands", commands(folder, sounds))
            if wants("scipy"):
                compare = str(pathlib.Path(__file__).with_name("compare_scipy.py"))
                write(document, "scipy", lines_of(compare, f"{folder}/detect_recording", *sounds))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
