"""Runs a program under the preloaded library of tests/faults/shim/, and reads what it reports."""

import os
import signal
import struct
import subprocess
import tempfile

LIBRARY = os.environ["ZUNA_FAULTS"]

HEADER = struct.Struct("<4Q")     # calls, calls that failed, at exit, open descriptors
ENTRY = struct.Struct("<24sQ")    # name, calls
ENTRIES = 64


class Run:
    """What became of a process."""

    def __init__(self, arguments, code, output, errors, report):
        self.arguments, self.code, self.output, self.errors = arguments, code, output, errors
        self.calls, self.fired, self.at_exit, self.descriptors = HEADER.unpack_from(report)
        entries = (ENTRY.unpack_from(report, HEADER.size + i * ENTRY.size) for i in range(ENTRIES))
        self.counts = {name.rstrip(b"\0").decode(): count for name, count in entries if name[0]}


def run(arguments, fault="", folder=None, environment=None, stdin=b"", timeout=60):
    """Runs a program with a fault, such as "write:2:28+"; shim/plan.h says how faults are written. One that does not end is
    killed after `timeout` seconds."""
    with tempfile.NamedTemporaryFile(prefix="zuna-faults-") as report:
        variables = dict(os.environ if environment is None else environment)
        variables.update(LD_PRELOAD=LIBRARY, ZUNA_FAULT=fault, ZUNA_FAULT_REPORT=report.name)
        try:
            done = subprocess.run(arguments, input=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=folder,
                                  env=variables, timeout=timeout, check=False)
            code, output, errors = done.returncode, done.stdout, done.stderr
        except subprocess.TimeoutExpired as late:
            code, output, errors = -signal.SIGKILL, late.stdout or b"", late.stderr or b""
        content = report.read()
    return Run(arguments, code, output, errors, content or bytes(HEADER.size + ENTRIES * ENTRY.size))
