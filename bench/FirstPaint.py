#!/usr/bin/env python3
"""Measures the start of the program to its first painted frame against a bare Qt window with as many controls.

FirstPaint.py SERVICE_FOLDER BENCH_FOLDER [RUNS]

Both programs start in turn under one Xvfb, with the same plugin observing them. The service folder gets a configuration
of 12 mail servers, 7 instances and 5 queues.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import time

WANTED = 1.25
WARM_UP = 3


def write_configuration(folder):
    sections = ["[ADMIN:Pellorin]\nSchedulerUsername=EXAMPLE\\scheduler\n"]
    for number in range(1, 13):
        sections.append(
            f"[MAIL:smtp{number:03}]\nSendMethod=2\nRemoteServerName=smtp{number:03}.example.com\n"
            "RemoteServerPort=25\nAuthenticationMethod=0\nSenderEmail=database@example.com\nConnectionTimeout=30\n")
    for number in range(1, 8):
        sections.append(
            f"[SQL:HOST{number:03}]\nConnectionType=Trusted\nTimeout=300\nWidth=0\nDefaultFormat=Text\n"
            "PrimaryMailServer=smtp001\nConfiguredDB=master\nAccessType=sysadmin\n")
    (folder / "Pellorin.ini").write_bytes("".join(sections).replace("\n", "\r\n").encode("ascii"))
    queues = folder / "QUEUEDefinitions"
    template = (queues / "defaultQUEUE.xml").read_bytes()
    for number in range(1, 6):
        (queues / f"Queue{number}.xml").write_bytes(template)


class Display:
    """A virtual screen for the duration of the measurement."""

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            sys.exit("FirstPaint.py: Xvfb does not start")
        return f":{number}"

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


def environment_of(display, service, bench):
    kept = {name: value for name, value in os.environ.items()
            if not name.startswith(("QT_", "XDG_", "PELLORIN_")) and name != "WAYLAND_DISPLAY"}
    return kept | {"DISPLAY": display, "LC_ALL": "C.UTF-8", "QT_PLUGIN_PATH": str(bench / "plugins"),
                   "QT_QPA_GENERIC_PLUGINS": "firstpaint", "PELLORIN_REGISTRY": str(service / "registry"),
                   "PELLORIN_SERVICE_FOLDER": str(service)}


def start(command, environment, window):
    """Milliseconds to the first frame, and the window's size and controls."""
    launched = {"PELLORIN_BENCH_LAUNCHED": str(time.monotonic_ns())}
    run = subprocess.run(command, env=environment | launched, stdout=subprocess.PIPE,
                         stderr=subprocess.PIPE, text=True, timeout=60)
    words = run.stdout.split()
    if run.returncode != 0 or len(words) < 4 or words[1] != window:
        sys.exit(f"FirstPaint.py: {command[0]} did not paint the window {window}: {run.stdout}{run.stderr}")
    return float(words[0]), words[2:]


def main():
    service, bench = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    runs = int(sys.argv[3]) if len(sys.argv) > 3 else 25
    write_configuration(service)
    with Display() as display:
        environment = environment_of(display, service, bench)
        program = [str(service / "PellorinConfig")]
        _, shape = start(program, environment, "frmMain")
        bare = [str(bench / "bench_bare_window"), *shape]
        _, bare_shape = start(bare, environment, "bare")
        times, bare_times = [], []
        for run in range(WARM_UP + runs):
            ours, theirs = start(program, environment, "frmMain")[0], start(bare, environment, "bare")[0]
            if run >= WARM_UP:
                times.append(ours)
                bare_times.append(theirs)
    controls = sum(int(word.rsplit("=", 1)[1]) for word in shape[2:])
    bare_controls = sum(int(word.rsplit("=", 1)[1]) for word in bare_shape[2:])
    median, bare_median = statistics.median(times), statistics.median(bare_times)
    ratio = median / bare_median
    print(f"First painted frame: {ratio:.2f} of a bare window ({median:.1f} ms, {bare_median:.1f} ms; {controls} and "
          f"{bare_controls} controls, {' x '.join(shape[:2])}, {runs} starts each); wanted: at most {WANTED}"
          + ("" if ratio <= WANTED else "  MISSED"))


main()
