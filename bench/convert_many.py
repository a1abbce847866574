#!/usr/bin/env python3
"""Measures `sonnel-tool convert` over 1,000 karaoke files beside the floor: writing what the
conversion writes, by plain copies and by copies that are flushed to the disk as its files are."""

import os
import shutil
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

FILES = 1000
RUNS = 3


def copy_flushed(source, target):
    shutil.copyfile(source, target)
    with open(target, "rb") as file:
        os.fsync(file.fileno())


def best(work, out):
    """The shortest time of some runs into an empty directory, in milliseconds."""
    times = []
    for _ in range(RUNS):
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir()
        start = time.monotonic()
        work()
        times.append(time.monotonic() - start)
    return min(times) * 1000


def measure(programs):
    """The times in milliseconds by name; `programs` is the directory of the built programs."""
    demos = sorted((programs / "KAR").glob("*.kar"))
    with tempfile.TemporaryDirectory(dir=programs) as folder:
        kars = [Path(folder) / f"{i:04}.kar" for i in range(FILES)]
        for i, kar in enumerate(kars):
            shutil.copyfile(demos[i % len(demos)], kar)
        out = Path(folder) / "out"

        def convert():
            subprocess.run([programs / "sonnel-tool", "convert", *kars, "--output", out],
                           check=True, stdout=subprocess.DEVNULL)

        def copy(how):
            with ThreadPoolExecutor(os.cpu_count()) as pool:
                list(pool.map(lambda made: how(made, out / made.name), written))

        times = {"ConvertMany": best(convert, out)}
        # The floor writes the very files, from where they can be read.
        kept = Path(folder) / "made"
        out.rename(kept)
        written = sorted(kept.iterdir())
        times["CopyMany"] = best(lambda: copy(shutil.copyfile), out)
        times["CopyManyFlushed"] = best(lambda: copy(copy_flushed), out)
    return times


if __name__ == "__main__":
    build = Path(__file__).resolve().parent.parent / "build" / "release" / "bin"
    for name, took in measure(build).items():
        print(f"{name}: {took:.0f} ms")
