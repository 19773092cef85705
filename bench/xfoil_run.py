#!/usr/bin/python3
"""XFOIL runs through tavilo-convert --xfoil, as a user meets them.

  - 8 Reynolds numbers x 81 angles (-5 to 15 degrees in quarter steps) of
    NACA 4412, median of N runs with -j 1 and with -j 2, and their ratio;
  - Tavilo's own share of a run: the same run with a fake xfoil that writes
    a finished 81-point polar file at once, so that what remains is starting
    the display, preparing the folders, reading, merging and writing;
  - converged angles of the up-then-down sweep against a plain script that
    sweeps once from the lowest angle upwards (one ASEQ per Reynolds number,
    run directly under xvfb-run), on three airfoils.

Usage: bench/xfoil_run.py [--convert PATH] [--runs N] [--skip-speed]
"""

import argparse
import os
import statistics
import subprocess
import sys
import tempfile
import time

RE = [1e5, 1.5e5, 2e5, 3e5, 4e5, 5e5, 7e5, 1e6]
ALPHA = (-5, 15, 0.25)


def timed(args):
    start = time.perf_counter()
    subprocess.run(args, check=False, stderr=subprocess.DEVNULL)
    return time.perf_counter() - start


def converted(convert, airfoil, folder, jobs, extra_env=None):
    out = os.path.join(folder, "out.pol")
    args = [convert, "--xfoil", airfoil, "--re", ",".join("%g" % r for r in RE),
            "--alpha", "%g:%g:%g" % ALPHA, "-j", str(jobs), out]
    return args, out


def count_points(path):
    """Point lines per polar block of a .pol file: the lines under each
    dashed rule that begin with a number, up to the next blank line."""
    counts, inside = [], False
    with open(path) as f:
        for line in f:
            if line.startswith("  ------"):
                counts.append(0)
                inside = True
            elif not line.strip():
                inside = False
            elif inside and is_number(line.split()[0]):
                counts[-1] += 1
    return counts


def is_number(text):
    try:
        float(text)
        return True
    except ValueError:
        return False


def plain_sweep(airfoil, folder):
    """One upward ASEQ per Reynolds number, xfoil run directly."""
    counts = []
    for re_number in RE:
        job = tempfile.mkdtemp(dir=folder)
        commands = ("NACA %s\n" % airfoil[5:] if airfoil.startswith("NACA ") else "LOAD %s\n" % airfoil)
        commands += ("PANE\nOPER\nVISC %g\nITER 100\nPACC\npolar.txt\n\nASEQ %g %g %g\nPACC\n\nQUIT\n"
                     % (re_number, ALPHA[0], ALPHA[1], ALPHA[2]))
        subprocess.run("xvfb-run -a xfoil > /dev/null 2>&1", shell=True, cwd=job, input=commands.encode())
        path = os.path.join(job, "polar.txt")
        lines = open(path).read().split("  ------")[-1].splitlines()[1:] if os.path.exists(path) else []
        counts.append(sum(1 for line in lines if line.split() and is_number(line.split()[0])))
    return counts


def main():
    parser = argparse.ArgumentParser()
    here = os.path.dirname(os.path.abspath(__file__))
    parser.add_argument("--convert", default=os.path.join(here, "..", "build", "src", "cli", "tavilo-convert"))
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--skip-speed", action="store_true")
    options = parser.parse_args()
    convert = os.path.abspath(options.convert)
    with tempfile.TemporaryDirectory() as folder:
        if not options.skip_speed:
            args, _ = converted(convert, "NACA 4412", folder, 1)
            one = statistics.median(timed(converted(convert, "NACA 4412", folder, 1)[0]) for _ in range(options.runs))
            two = statistics.median(timed(converted(convert, "NACA 4412", folder, 2)[0]) for _ in range(options.runs))
            print("8 Re x 81 angles, NACA 4412, median of %d: -j 1 %.2f s, -j 2 %.2f s, ratio %.2f"
                  % (options.runs, one, two, two / one))
            # Tavilo's share: xfoil replaced by a script that writes the polar at once.
            subprocess.run(args, check=False, stderr=subprocess.DEVNULL)
            polar = open(os.path.join(folder, "out.pol")).read().split(" Calculated polar")[1]
            fake = os.path.join(folder, "fake-xfoil")
            with open(os.path.join(folder, "polar.txt"), "w") as f:
                f.write(" Calculated polar" + polar)
            with open(fake, "w") as f:
                f.write("#!/bin/sh\ncp %s polar.txt\n" % os.path.join(folder, "polar.txt"))
            os.chmod(fake, 0o755)
            env_path = folder + ":" + os.environ["PATH"]
            os.rename(fake, os.path.join(folder, "xfoil"))
            own = []
            for _ in range(options.runs):
                start = time.perf_counter()
                subprocess.run(args, env=dict(os.environ, PATH=env_path), stderr=subprocess.DEVNULL)
                own.append(time.perf_counter() - start)
            print("Tavilo's own share (display, folders, reading, merging, writing), median: %.3f s"
                  % statistics.median(own))
        print("\nConverged angles of 8 x 81 (Tavilo up-then-down / plain upward sweep):")
        for airfoil in ["NACA 4412", "NACA 2412", "NACA 23012"]:
            args, out = converted(convert, airfoil, folder, 2)
            subprocess.run(args, check=False, stderr=subprocess.DEVNULL)
            ours = count_points(out)
            plain = plain_sweep(airfoil, folder)
            print("  %-10s %3d / %3d   per Re: %s" % (airfoil, sum(ours), sum(plain),
                                                    " ".join("%d/%d" % p for p in zip(ours, plain))))


if __name__ == "__main__":
    sys.exit(main())
