"""The scripts of examples/cluster/: Dask with a scheduler and workers of this machine, GNU parallel, and Slurm.
ZUNA_CONVERT is the tool, ZUNA_SOURCE the repository."""

import contextlib
import getpass
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

TOOL = pathlib.Path(os.environ["ZUNA_CONVERT"])
EXAMPLES = pathlib.Path(os.environ["ZUNA_SOURCE"]) / "examples"
SAMPLE = EXAMPLES / "three-tunes-0.0.showdata"
CLUSTER = EXAMPLES / "cluster"
DASK = (sys.executable, "-B", CLUSTER / "dask_convert.py")
UP = ("up", "--show-name", "X", "--out-dir")
FILES = 2000
DONE, PART_FAILED, USAGE = 0, 7, 2


SLURM = """ClusterName=test
SlurmctldHost={node}(127.0.0.1)
SlurmctldPort={port}
SlurmdPort={node_port}
SlurmUser={user}
SlurmdUser={user}
StateSaveLocation={place}/state
SlurmdSpoolDir={place}/spool
SlurmctldPidFile={place}/slurmctld.pid
SlurmdPidFile={place}/slurmd.pid
AuthInfo=socket={place}/socket
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
ReturnToService=2
NodeName={node} NodeAddr=127.0.0.1 CPUs=2 State=UNKNOWN
PartitionName=all Nodes={node} Default=YES State=UP
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class ClusterTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="zuna-cluster-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.environment = {**os.environ, "ZUNA_KEY_FILE": str(EXAMPLES / "three-tunes.key"),
                            "PATH": f"{TOOL.parent}:{os.environ['PATH']}", "SLURM_CPUS_PER_TASK": "1"}

    def make(self, count):
        """A folder with this many shows, one of which is damaged."""
        for number in range(count):
            place = self.folder / "in" / str(number % 7)
            place.mkdir(parents=True, exist_ok=True)
            shutil.copy(SAMPLE, place / f"{number}.showdata")
        (self.folder / "in/0/0.showdata").write_bytes(SAMPLE.read_bytes()[:500])

    def run_in(self, *command, code=DONE, **variables):
        done = subprocess.run([str(word) for word in command], cwd=self.folder, env={**self.environment, **variables},
                              capture_output=True, text=True, check=False, timeout=300)
        self.assertEqual(done.returncode, code, done.stdout + done.stderr)
        return done

    def written(self, name):
        root = self.folder / name
        return {path.relative_to(root): path.read_bytes() for path in root.rglob("*") if path.is_file()}

    def lines(self, *reports):
        return [line for report in reports for line in (self.folder / report).read_text().splitlines()]

    def on_one_machine(self):
        """What one run of the tool makes of the same files, and its report."""
        names = "".join(f"{path.relative_to(self.folder)}\n" for path in sorted(self.folder.glob("in/*/*")))
        (self.folder / "list").write_text(names)
        self.run_in(TOOL, *UP, "new", "--files-from", "list", "--report", "one.json", "-q", code=PART_FAILED)
        (self.folder / "new").rename(self.folder / "one")
        return self.written("one"), sorted(self.lines("one.json"))


class DaskTest(ClusterTest):
    @contextlib.contextmanager
    def cluster(self, workers):
        """The address of a scheduler, and the processes of its workers."""
        address = f"tcp://127.0.0.1:{free_port()}"
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "start_new_session": True,
                 "cwd": self.folder, "env": self.environment}
        dask = [sys.executable, "-m"]
        processes = [subprocess.Popen([*dask, "distributed.cli.dask_scheduler", "--host", address, "--no-dashboard",
                                       "--no-show"], **quiet)]
        try:
            for number in range(workers):
                processes.append(subprocess.Popen([*dask, "distributed.cli.dask_worker", address, "--nthreads", "1", "--no-nanny",
                                                   "--no-dashboard", "--local-directory", str(self.folder / f"scratch-{number}")], **quiet))
            yield address, processes[1:]
        finally:
            for process in processes:
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(process.pid, signal.SIGKILL)
                process.wait()

    def wait_for_lines(self, driver, count):
        """Waits until the report has so many lines."""
        report = self.folder / "report"
        while not report.exists() or report.read_bytes().count(b"\n") < count:
            self.assertIsNone(driver.poll())
            time.sleep(0.002)

    def test_is_the_same_as_on_one_machine_though_a_worker_dies(self):
        self.make(FILES)
        expected, report = self.on_one_machine()
        command = (*DASK, "in", "--report", "report", "--part", "50", "--tool", TOOL)
        with self.cluster(3) as (address, workers):
            driver = subprocess.Popen([str(word) for word in (*command, "--scheduler", address, "--", *UP, "new")],
                                      cwd=self.folder, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            self.wait_for_lines(driver, FILES // 10)
            workers[0].kill()  # and what it has started goes on
            said, errors = driver.communicate(timeout=300)
            self.assertEqual(driver.returncode, PART_FAILED, errors)
            self.assertEqual(said, f"{FILES} files: {FILES - 1} done, 1 failed\n")
            self.assertIn("in/0/0.showdata: ends after 428 of 5899 encrypted bytes", errors)
            self.assertEqual(self.written("new"), expected)
            self.assertEqual(sorted(self.lines("report")), report)

            shutil.copy(SAMPLE, self.folder / "in/0/0.showdata")
            self.run_in(*command, "--scheduler", address, "--", *UP, "new")
            self.assertEqual(len(self.lines("report")), FILES + 1)
            self.assertEqual(len(self.written("new")), FILES)
        self.assertFalse((self.folder / "report.parts").exists())

    def test_goes_on_after_it_was_killed(self):
        self.make(300)
        expected, _ = self.on_one_machine()
        command = (*DASK, "in", "--report", "report", "--part", "20", "--tool", TOOL)
        with self.cluster(2) as (address, _):
            words = [str(word) for word in (*command, "--scheduler", address, "--", *UP, "new")]
            driver = subprocess.Popen(words, cwd=self.folder, env=self.environment, stderr=subprocess.DEVNULL)
            self.wait_for_lines(driver, 1)
            driver.kill()
            driver.wait()
            self.run_in(*words, code=PART_FAILED)
        self.assertEqual(self.written("new"), expected)
        done = [json.loads(line)["path"] for line in self.lines("report") if '"status": "done"' in line]
        self.assertEqual(len(done), len(set(done)))
        self.assertEqual(len(done), 299)

    def test_uses_this_machine_unless_told(self):
        self.make(30)
        (self.folder / "list").write_text("in/1/1.showdata\nin/2/2.showdata\n")
        self.run_in(*DASK, "--files-from", "list", "--report", "report", "--tool", TOOL, "--", *UP, "new")
        self.assertEqual(len(self.written("new")), 2)

    def test_tells_what_is_wrong_with_the_command(self):
        self.make(3)
        done = self.run_in(*DASK, "in", "--report", "report", "--tool", TOOL, code=USAGE)
        self.assertIn('give a command of zuna-convert after "--"', done.stderr)
        done = self.run_in(*DASK, "in", "--report", "report", "--tool", TOOL, "--", "up", "--nothing", code=USAGE)
        self.assertIn("--nothing", done.stderr)


class ShardsTest(ClusterTest):
    def test_gnu_parallel(self):
        self.make(40)
        done = self.run_in(CLUSTER / "gnu-parallel.sh", "3", "in", "new", "--show-name", "X", code=1)
        self.assertIn("in/0/0.showdata: ends after", done.stderr)
        self.expect_all(3)

    def test_variables_of_slurm(self):
        self.make(40)
        codes = []
        for task in range(1, 4):
            done = subprocess.run([CLUSTER / "slurm.sh", "in", "new", "--show-name", "X"], cwd=self.folder, check=False,
                                  stderr=subprocess.DEVNULL, env={**self.environment, "SLURM_ARRAY_TASK_ID": str(task), "SLURM_ARRAY_TASK_COUNT": "3"})
            codes.append(done.returncode)
        self.assertEqual(sorted(codes), [DONE, DONE, PART_FAILED])
        self.expect_all(3)

    @unittest.skipUnless(shutil.which("slurmctld") and shutil.which("munged"), "Slurm is not installed")
    def test_slurm(self):
        self.make(40)
        with self.slurm() as configuration:
            self.run_in("sbatch", "--wait", "--array=1-3", "--cpus-per-task=1", CLUSTER / "slurm.sh", "in", "new", "--show-name", "X",
                        code=PART_FAILED, SLURM_CONF=str(configuration))
        self.expect_all(3)

    @contextlib.contextmanager
    def slurm(self):
        """A Slurm of this machine alone, and its configuration."""
        place = self.folder / "slurm"
        (place / "state").mkdir(parents=True)
        (place / "key").write_bytes(os.urandom(1024))
        (place / "key").chmod(0o400)
        user, node = getpass.getuser(), socket.gethostname().partition(".")[0]
        configuration = place / "slurm.conf"
        configuration.write_text(SLURM.format(place=place, user=user, node=node, port=free_port(), node_port=free_port()))
        munge = ("munged", "--foreground", "--force", f"--socket={place}/socket", f"--key-file={place}/key", f"--log-file={place}/log",
                 f"--pid-file={place}/munge.pid", f"--seed-file={place}/seed")
        with contextlib.ExitStack() as stack:
            for daemon in (munge, ("slurmctld", "-D", "-i"), ("slurmd", "-D")):
                process = stack.enter_context(subprocess.Popen(daemon, env={**self.environment, "SLURM_CONF": str(configuration)},
                                                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
                stack.callback(process.terminate)
            yield configuration

    def expect_all(self, parts):
        self.assertEqual(len(self.written("new")), 39)
        states = [json.loads(line)["status"] for line in self.lines(*(f"up-{part}.json" for part in range(1, parts + 1)))]
        self.assertEqual(sorted(states), ["done"] * 39 + ["failed"])


if __name__ == "__main__":
    unittest.main()
