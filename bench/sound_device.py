#!/usr/bin/env python3
"""Measures the player on a sound server of its own, which plays into a null sink: how many gaps it has
on a busy machine, how far the position it reports is from what is heard, and how long a song halts when the server dies and comes back."""

import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ATTEMPTS = 3  # a busy machine may halt the recording
RECORDING = ["--latency-msec=20", "--device=test.monitor", "--format=float32le", "--rate=48000",
             "--channels=2"]


def available():
    return all(shutil.which(program) for program in ("pulseaudio", "pactl", "parec"))


def wait(condition, seconds, failure):
    for _ in range(seconds * 20):
        if condition():
            return
        time.sleep(0.05)
    sys.exit(failure)


class Server:
    """A sound server that shares nothing with the user's: neither settings nor sockets."""

    def __init__(self, folder):
        self.folder = folder
        self.processes = []
        runtime = folder / "run"
        configuration = folder / "config"
        for directory in (runtime / "pulse", configuration / "pulse", folder / "state"):
            directory.mkdir(parents=True)
        runtime.chmod(0o700)
        (configuration / "pulse" / "client.conf").write_text("autospawn = no\n")
        self.socket = runtime / "pulse" / "native"
        theirs = ("PULSE_SINK", "PULSE_COOKIE", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS")
        self.environment = {name: value for name, value in os.environ.items() if name not in theirs}
        self.environment.update(
            HOME=str(folder), XDG_RUNTIME_DIR=str(runtime), XDG_CONFIG_HOME=str(configuration),
            PULSE_RUNTIME_PATH=str(runtime / "pulse"), PULSE_STATE_PATH=str(folder / "state"),
            PULSE_SERVER=f"unix:{self.socket}")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.processes:
            process.kill()
            process.wait()

    def run(self, command, **options):
        process = subprocess.Popen(command, env=self.environment, **options)
        self.processes.append(process)
        return process

    def start(self):
        with open(self.folder / "server.log", "w", encoding="utf-8") as log:
            server = self.run(
                ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                 "--disallow-exit=yes", "--log-level=error", "-L",
                 f"module-native-protocol-unix socket={self.socket} auth-anonymous=1",
                 "-L", "module-null-sink sink_name=test rate=48000"], stderr=log)
        asked = ["pactl", "info"]
        wait(lambda: subprocess.run(asked, env=self.environment, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL, check=False).returncode == 0,
             10, "the sound server does not start")
        return server

    def listen(self, path):
        """Writes what is heard to a file. A null sink that nobody listens to works in steps of two
        seconds, so there has to be a listener all the time."""
        return self.run(["parec", *RECORDING, path], stderr=subprocess.DEVNULL)


def stop(process):
    process.kill()
    process.wait()


class Busy:
    """Four processes that never wait."""

    def __enter__(self):
        self.processes = [subprocess.Popen([sys.executable, "-c", "while True: pass"], start_new_session=True) for _ in range(4)]

    def __exit__(self, *_):
        for process in self.processes:
            stop(process)


def gaps(server, program, pipe):
    """How often a level of twenty seconds falls silent on a busy machine."""
    recorder = server.listen(pipe)
    player = server.run([program, "gaps", pipe], stdout=subprocess.PIPE, text=True)
    with Busy():
        output = player.communicate(timeout=60)[0]
    stop(recorder)
    return float(output)


def position_apart(server, program, pipe):
    """How far the position and the sound are apart at most, in milliseconds."""
    found = []
    for _ in range(ATTEMPTS):
        recorder = server.listen(pipe)
        player = server.run([program, "sync", pipe], stdout=subprocess.PIPE, text=True)
        output = player.communicate(timeout=60)[0]
        if player.returncode == 0:
            found.append(float(output))
        stop(recorder)
    if not found:
        sys.exit(f"{program.name}: the recording never had exactly the sounds that were played")
    return min(found)


def longest_halt(server, program, running):
    """How long the position stands still while the server dies and comes back, in milliseconds."""
    before, after, output = (server.folder / name for name in ("before", "after", "output"))
    recorder = server.listen(before)
    wait(lambda: before.exists() and before.stat().st_size > 0, 10, "nothing is recorded")
    with open(output, "w", encoding="utf-8") as file:
        player = server.run([program, "loss"], stdout=file)
    wait(lambda: "playing" in output.read_text(), 10, f"{program.name} does not play")
    time.sleep(2)
    stop(running)
    stop(recorder)
    time.sleep(1)
    server.start()
    server.listen(after)
    if player.wait(timeout=60) != 0:
        sys.exit(f"{program.name}: the song did not go on")
    if not any(after.read_bytes()):
        sys.exit(f"{program.name}: nothing is heard on the new server")
    return float(output.read_text().split()[-1])


def measure(programs):
    """The figures in milliseconds by name; `programs` is the directory of the built programs."""
    program = programs / "sound_device"
    if not available() or not program.exists():
        return {}
    with tempfile.TemporaryDirectory() as folder, Server(Path(folder)) as server:
        running = server.start()
        pipe = Path(folder) / "heard"
        os.mkfifo(pipe)
        return {"GapsWhenBusy": gaps(server, program, pipe),
                "PositionApart": position_apart(server, program, pipe),
                "LongestHalt": longest_halt(server, program, running)}


if __name__ == "__main__":
    build = Path(__file__).resolve().parent.parent / "build" / "release" / "bin"
    for name, took in measure(build).items():
        print(f"{name}: {took:.0f}")
