"""Runs of the command on a small example, with faults that the preloaded library of shim.cpp makes.

The environment names the program (FAULTS_PROGRAM) and the library (FAULTS_SHIM). FAULTS_PRIVATE
says that mounts and /dev/shm are the tests' own.
"""

import collections
import errno
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
EXAMPLE = ROOT / "examples" / "knapsack"
PROGRAM = os.environ["FAULTS_PROGRAM"]
SHIM = os.environ["FAULTS_SHIM"]
PRIVATE = "FAULTS_PRIVATE" in os.environ
SEMAPHORES = pathlib.Path("/dev/shm")
NOBODY = 65534
TIME_LIMIT = 60  # seconds

Result = collections.namedtuple("Result", "status stdout stderr pid")

is_root = unittest.skipUnless(os.geteuid() == 0, "needs root")
has_mounts = unittest.skipUnless(PRIVATE, "needs mounts of its own")


def error(call, number, code):
    """The call with this number fails with an error like "EIO"; number 0 is every one."""
    return f"{call}:{number}:error={getattr(errno, code)}"


def short(call, number=0):
    """The call moves half of its bytes."""
    return f"{call}:{number}:short"


def met(when, number, call="any", at=0):
    """A signal "before" or "after" a call."""
    return f"{call}:{at}:{when}={int(number)}"


def failure(message, reason=None):
    """The report of the fatal channel."""
    first = f"ERRNO = {os.strerror(getattr(errno, reason))}\n" if reason else ""
    return f"{first}\n*** FAIL: {message}\n"


class FaultCase(unittest.TestCase):
    """A work folder with a problem, `name`.opt, and its unsorted solutions, `name`.sol."""

    name = "knapsack"
    argument = None  # of the command, unless it is the file of solutions

    def setUp(self):
        # Not in /tmp itself, whose sticky bit changes who may rename.
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="faults-"))
        self.addCleanup(shutil.rmtree, self.scratch)
        self.scratch.chmod(0o755)
        self.folder = self.scratch / "work"
        self.folder.mkdir()
        self.sol = self.folder / f"{self.name}.sol"
        shutil.copyfile(EXAMPLE / "knapsack.opt", self.folder / f"{self.name}.opt")
        self.old = (EXAMPLE / "knapsack.sol").read_bytes()
        self.new = (EXAMPLE / "expected.sol").read_bytes()
        self.report = (EXAMPLE / "expected.out").read_text()
        self.restore()

    def restore(self):
        """The file as it was; nothing left of runs before."""
        self.sol.write_bytes(self.old)
        if PRIVATE:
            for path in SEMAPHORES.iterdir():
                path.unlink()

    def give_to_nobody(self):
        for path in (self.folder, *self.folder.iterdir()):
            os.chown(path, NOBODY, NOBODY)

    def start(self, fault=None, command=(PROGRAM,), **options):
        """A run under way. As nobody with user=NOBODY."""
        environment = dict(os.environ, LD_PRELOAD=SHIM)
        if fault:
            environment["FAULT"] = fault
        if "log" in options:
            environment["FAULT_LOG"] = str(options.pop("log"))
        if "user" in options:
            options.update(group=options["user"], extra_groups=[])
        arguments = [self.argument or self.sol.name] if options.pop("argument", True) else []
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        return subprocess.Popen(
            [*command, *arguments], cwd=self.folder, env=environment, text=True, **options
        )

    def stopped(self, call, number=1, **options):
        """A run that has stopped itself after a call."""
        process = self.start(met("after", signal.SIGSTOP, call, number), **options)
        _, status = os.waitpid(process.pid, os.WUNTRACED)
        self.assertTrue(os.WIFSTOPPED(status))
        return process

    def go_on(self, process):
        process.send_signal(signal.SIGCONT)
        return self.finish(process)

    def finish(self, process):
        stdout, stderr = process.communicate(timeout=TIME_LIMIT)
        return Result(process.returncode, stdout, stderr, process.pid)

    def run_with(self, fault=None, **options):
        return self.finish(self.start(fault, **options))

    def calls(self, **options):
        """The names of the calls of a run, in their order."""
        log = self.scratch / "log"
        log.write_text("")
        log.chmod(0o666)
        self.run_with(log=log, **options)
        self.restore()
        return log.read_text().split()

    def system_calls(self):
        return [name for name in self.calls() if name != "new"]

    def number_of(self, call, behind, skip=0):
        """The number of the first `call` behind another one, counted among its kind from 1."""
        calls = self.calls()
        for name in behind.split():
            self.assertIn(name, calls[skip:])
            skip = calls.index(name, skip) + 1
        self.assertIn(call, calls[skip:])
        return calls[:skip].count(call) + 1

    def left_behind(self, result):
        """Unfinished files, and semaphores of the run."""
        files = {str(path) for path in self.folder.iterdir() if path.name.startswith(".starsift")}
        pattern = "*" if PRIVATE else f"sem.{result.pid}_*"
        return files | {str(path) for path in SEMAPHORES.glob(pattern)}

    def clear(self, result):
        for path in self.left_behind(result):
            os.unlink(path)

    def text(self):
        return self.sol.read_bytes() if self.sol.exists() else b""

    def assert_whole(self, *wholes):
        self.assertIn(self.text(), wholes or (self.old, self.new))

    def assert_nothing_left(self, result):
        self.assertEqual(self.left_behind(result), set(), result)

    def assert_done(self, result):
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(result.stdout, self.report)
        self.assertEqual(self.text(), self.new)
        self.assert_nothing_left(result)

    def assert_refused(self, result, message, reason=None):
        """Status 1 and the report; the old file stays."""
        self.assertEqual(result.stderr, failure(message, reason))
        self.assertEqual((result.status, result.stdout), (1, ""))
        self.assertEqual(self.text(), self.old)
        self.assert_nothing_left(result)

    def assert_not_written(self, result):
        self.assert_refused(result, f"Could not write file: {self.sol.name}")

    def assert_killed(self, result, *signals):
        self.assertIn(result.status, [-number for number in signals], result)

    def assert_runs_again(self):
        """Whatever lies about stops no later run."""
        result = self.run_with()
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(self.text(), self.new)


class NoRightStarCase(FaultCase):
    """The same with solutions that are all wrong, so that the file has to go."""

    def setUp(self):
        super().setUp()
        self.old = b"[ 1 1 1 1 ]\n"
        self.new = b""
        self.report = "\n\n"
        self.restore()
