#!/usr/bin/env python3
"""Measures `sonnel-tool convert` and `add` over 1,000 karaoke files beside the floor: copying what they
write, for `add` each file flushed. All read and write in memory, where the system has such a place."""

import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

FILES = 1000
MEMORY = Path("/dev/shm")  # a disk is too uneven to be measured on
RUNS = 5


def timed(work, out):
    """How long it takes into an empty directory, in milliseconds."""
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir()
    start = time.monotonic()
    work()
    return (time.monotonic() - start) * 1000


def measure(programs):
    """The times in milliseconds by name; `programs` is the directory of the built programs."""
    demos = sorted((programs / "KAR").glob("*.kar"))
    with tempfile.TemporaryDirectory(dir=MEMORY if MEMORY.is_dir() else None) as folder:
        kars = [Path(folder) / f"{i:04}.kar" for i in range(FILES)]
        for i, kar in enumerate(kars):
            shutil.copyfile(demos[i % len(demos)], kar)
        out = Path(folder) / "out"

        def convert():
            subprocess.run([programs / "sonnel-tool", "convert", *kars, "--output", out],
                           check=True, stdout=subprocess.DEVNULL)

        def add():
            subprocess.run([programs / "sonnel-tool", "add", out, *kars], check=True,
                           stdout=subprocess.DEVNULL)

        def copy_flushed():
            for file in written:
                with open(file, "rb") as source, open(out / file.name, "wb") as copied:
                    copied.write(source.read())
                    copied.flush()
                    os.fsync(copied.fileno())

        def copy():
            subprocess.run(["cp", "-t", out, *written], check=True)

        timed(convert, out)
        # The floor writes the very files, from where they can be read.
        kept = Path(folder) / "made"
        out.rename(kept)
        written = sorted(kept.iterdir())
        works = {"ConvertMany": convert, "CopyMany": copy, "AddMany": add,
                 "CopyManyFlushed": copy_flushed}
        # In turn, since a machine is not as fast at all times; the best of each.
        rounds = [{name: timed(work, out) for name, work in works.items()} for _ in range(RUNS)]
        times = {name: min(taken[name] for taken in rounds) for name in works}
    return times


if __name__ == "__main__":
    build = Path(__file__).resolve().parent.parent / "build" / "release" / "bin"
    for name, took in measure(build).items():
        print(f"{name}: {took:.0f} ms")
