#!/usr/bin/python3
"""Speed and memory of tavilo-convert as a user meets it: a fresh process.

Makes its test files in a scratch folder (200 polars x 1000 points as XML,
PEF and XFOIL saves one after the other, one XFOIL polar of 30,000 points,
a tiny file,
and 1,000 PEF files of 5 polars x 200 points), then measures, each as the
median of several runs with the files in the page cache:

  - reading speed of `--info` on the large files, in MB/s of file;
  - start-up on a tiny file, for every mode that draws nothing;
  - peak resident memory while reading, beyond that of a tiny-file run,
    as a multiple of the file's size;
  - Tavilo's reading time of the 30,000-point XFOIL file (the run less the
    start-up) against numpy.loadtxt on the same lines (python3-numpy);
  - `--batch` over the 1,000 PEF files.

Usage: bench/whole_process.py [--convert PATH] [--runs N] [--keep DIR]
"""

import argparse
import math
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
DEFAULT_CONVERT = os.path.join(HERE, "..", "build", "src", "cli", "tavilo-convert")
GNU_TIME = "/usr/bin/time"


def run(argv, quiet=True):
    """Runs argv; returns its seconds."""
    start = time.perf_counter()
    out = subprocess.DEVNULL if quiet else None
    process = subprocess.Popen(argv, stdout=out, stderr=out)
    _, status, _ = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit("failed: " + " ".join(argv))
    return seconds


def peak_kb(argv):
    """The peak resident memory of argv in kB. A child's peak includes what
    the process it was forked from had resident before exec, here all of
    Python, so the small C program GNU time (Debian package `time`) runs it."""
    result = subprocess.run([GNU_TIME, "-f", "%M"] + argv, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, text=True, check=True)
    return int(result.stderr.strip().splitlines()[-1])


def median_run(argv, runs):
    """Median seconds and, where GNU time is at hand, the largest peak memory."""
    seconds = statistics.median(run(argv) for _ in range(runs))
    peak = max(peak_kb(argv) for _ in range(3)) if os.path.exists(GNU_TIME) else None
    return seconds, peak


def sweep(points, shift):
    for i in range(points):
        a = -10 + 30 * i / max(points - 1, 1)
        cl = 0.4 + 0.1 * a * math.exp(-a * a / 600) + shift
        yield a, cl, 0.006 + 0.00004 * a * a + shift / 100, -0.08 + 0.002 * a, 0.6 - 0.02 * a, 0.4 + 0.02 * a


def write_csv(path, polars, points):
    with open(path, "w") as f:
        f.write("set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr\n")
        for p in range(polars):
            for a, cl, cd, cm, tu, tl in sweep(points, 0.002 * p):
                f.write(f'1,"Set",{p + 1},"P{p}",{50000 * (p + 1)},0,{a:.6f},{cl:.6f},{cd:.6f},{cm:.6f},{tu:.6f},{tl:.6f}\n')


XFOIL_HEAD = """  
       XFOIL         Version 6.99
  
 Calculated polar for: BENCH                                          
  
 1 1 Reynolds number fixed          Mach number fixed         
  
 xtrf =   1.000 (top)        1.000 (bottom)  
 Mach =   0.000     Re =     1.000 e 6     Ncrit =   9.000  9.000
  
   alpha    CL        CD       CDp       CM     Top_Xtr  Bot_Xtr  Top_Itr  Bot_Itr
  ------ -------- --------- --------- -------- -------- -------- -------- --------
"""


def write_xfoil(path, polars, points):
    """XFOIL saves one after the other, as a file of several runs holds them."""
    with open(path, "w") as f:
        for p in range(polars):
            f.write(XFOIL_HEAD)
            for a, cl, cd, cm, tu, tl in sweep(points, 0.002 * p):
                f.write(f"{a:8.3f} {cl:8.4f} {cd:9.5f} {cd / 10:9.5f} {cm:8.4f} {tu:8.4f} {tl:8.4f} {40.0:8.4f} {180.0:8.4f}\n")
    return len(XFOIL_HEAD.splitlines())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--convert", default=DEFAULT_CONVERT)
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--keep", help="make the files here and keep them")
    args = parser.parse_args()
    convert = os.path.abspath(args.convert)
    work = args.keep or tempfile.mkdtemp(prefix="tavilo-whole-")
    os.makedirs(work, exist_ok=True)
    f = lambda name: os.path.join(work, name)

    if not os.path.exists(f("big.pef")):
        write_csv(f("big.csv"), 200, 1000)
        run([convert, f("big.csv"), f("big.xml")])
        run([convert, f("big.csv"), f("big.pef")])
        write_xfoil(f("big.pol"), 200, 1000)
        write_csv(f("tiny.csv"), 1, 3)
        run([convert, f("tiny.csv"), f("tiny.xml")])
        write_csv(f("five.csv"), 5, 200)
        run([convert, f("five.csv"), f("five.pef")])
        os.makedirs(f("batch"), exist_ok=True)
        for k in range(1000):
            shutil.copy(f("five.pef"), os.path.join(f("batch"), f"polars{k:04d}.pef"))
    header = write_xfoil(f("30k.pol"), 1, 30000)

    print(f"load average {os.getloadavg()[0]:.2f}, {os.cpu_count()} cores, median of {args.runs} runs")
    startup, tiny_rss = median_run([convert, "--info", f("tiny.xml")], args.runs * 2)
    print(f"start-up --info on a tiny file: {startup * 1000:.1f} ms")
    for mode in (["--version"], ["--help"], [f("tiny.xml"), f("tiny-out.pef")]):
        seconds, _ = median_run([convert] + mode, args.runs * 2)
        print(f"start-up {' '.join(os.path.basename(m) for m in mode)}: {seconds * 1000:.1f} ms")

    for name in ("big.xml", "big.pol", "big.pef"):
        size = os.path.getsize(f(name))
        seconds, rss = median_run([convert, "--info", f(name)], args.runs)
        reading = max(seconds - startup, 1e-9)
        memory = (f"{(rss - tiny_rss) * 1024 / size:.2f} x the file" if rss is not None
                  else "not measured (install the package `time`)")
        print(f"--info {name} ({size / 1e6:.1f} MB): {seconds * 1000:.0f} ms, {size / 1e6 / seconds:.0f} MB/s "
              f"(reading alone {size / 1e6 / reading:.0f} MB/s), peak memory beyond a tiny run {memory}")

    seconds = statistics.median(run([convert, "--info", f("30k.pol")]) for _ in range(args.runs))
    reading = seconds - startup
    try:
        import numpy
        lines = open(f("30k.pol")).read()
        best = []
        for _ in range(args.runs):
            t = time.perf_counter()
            numpy.loadtxt(f("30k.pol"), skiprows=header)
            best.append(time.perf_counter() - t)
        numpy_time = statistics.median(best)
        print(f"30,000-point XFOIL ({len(lines) / 1e6:.1f} MB): Tavilo reads in {reading * 1000:.1f} ms, "
              f"numpy.loadtxt in {numpy_time * 1000:.1f} ms: Tavilo takes {reading / numpy_time:.2f} of numpy's time")
    except ImportError:
        print(f"30,000-point XFOIL: Tavilo reads in {reading * 1000:.1f} ms (install python3-numpy to compare)")

    for jobs in ([], ["-j", "1"]):
        times = []
        for _ in range(3):
            for out in os.listdir(f("batch")):
                if out.endswith(".xml"):
                    os.remove(os.path.join(f("batch"), out))
            times.append(run([convert, "--batch"] + jobs + [f("batch")]))
        label = " ".join(jobs) or "(default jobs)"
        print(f"--batch {label} over 1,000 PEF files of 5 x 200 points: {statistics.median(times):.2f} s")

    if not args.keep:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
