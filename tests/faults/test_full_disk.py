"""No space: limits of file sizes, and file systems that are full."""

import pathlib
import resource
import subprocess
import unittest

from faulty import PROGRAM, SEMAPHORES, FaultCase, NoRightStarCase, failure, has_mounts

# Bytes that a semaphore takes on the system.
SEMAPHORE_SIZE = 32


def mount(case, folder, size):
    """An empty file system of so many bytes, until the end of the test."""
    subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", folder], check=True)
    case.addCleanup(subprocess.run, ["umount", folder], check=True)


def fill(folder, keep=0):
    """Leaves room for so many bytes."""
    rest = folder / "rest"
    with rest.open("wb", buffering=0) as file:
        try:
            while True:
                file.write(b"x" * 4096)
        except OSError:
            file.truncate(max(file.tell() - keep, 0))


class SizeLimit(FaultCase):
    def run_within(self, size):
        return self.run_with(
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
        )

    def test_new_text_beyond_the_limit_is_reported(self):
        for size in (SEMAPHORE_SIZE, len(self.new) // 2, len(self.new) - 1):
            with self.subTest(size=size):
                self.assert_not_written(self.run_within(size))

    def test_new_text_at_the_limit_is_written(self):
        self.assert_done(self.run_within(len(self.new)))

    def test_semaphore_beyond_the_limit_is_reported_with_its_reason(self):
        for size in (0, 1, SEMAPHORE_SIZE - 1):
            with self.subTest(size=size):
                result = self.run_within(size)
                self.assert_refused(result, "SEM could not be opened", "EFBIG")


class SizeLimitWithoutStars(NoRightStarCase, SizeLimit):
    """The file only has to go, which needs no space but for the semaphores."""

    def test_new_text_beyond_the_limit_is_reported(self):
        self.assert_done(self.run_within(SEMAPHORE_SIZE))

    def test_new_text_at_the_limit_is_written(self):
        self.assert_done(self.run_within(SEMAPHORE_SIZE))


@has_mounts
class FullDisk(FaultCase):
    def setUp(self):
        super().setUp()
        files = {path.name: path.read_bytes() for path in self.folder.iterdir()}
        mount(self, self.folder, 64 << 10)
        for name, content in files.items():
            (self.folder / name).write_bytes(content)

    def test_new_text_without_room_is_reported(self):
        fill(self.folder)
        self.assert_not_written(self.run_with())

    def test_new_text_that_fits_to_the_byte_is_written(self):
        fill(self.folder, keep=4096)
        self.assert_done(self.run_with())

    def test_long_text_with_room_for_a_part_is_reported(self):
        self.old = b"[ 1 4 40 0 ] | 0 | [ ] | 0 | 1 | p%d" + b"p" * 9000 + b"\n"
        self.old = b"".join(self.old.replace(b"%d", b"%d" % i) for i in range(3))
        self.restore()
        fill(self.folder, keep=8192)
        self.assert_not_written(self.run_with())

    def test_read_only_file_system_leaves_the_file_alone(self):
        subprocess.run(["mount", "-o", "remount,ro", self.folder], check=True)
        result = self.run_with()
        self.assertEqual((result.status, result.stdout), (0, self.report))
        self.assert_whole(self.old)


@has_mounts
class SearchOnFullDisk(FaultCase):
    """A search whose folder has no room from the moment at which it looks for solutions."""

    def setUp(self):
        super().setUp()
        problem = (self.folder / "knapsack.opt").read_bytes()
        mount(self, self.folder, 64 << 10)
        (self.folder / "knapsack.opt").write_bytes(problem)
        self.sol.write_bytes(self.old)
        fill(self.folder)

    def search(self, cwd):
        shown = self.folder / "knapsack.opt" if cwd != self.folder else "knapsack.opt"
        result = subprocess.run(
            [pathlib.Path(PROGRAM).with_name("starseek"), "--sol=1", shown],
            cwd=cwd,
            capture_output=True,
            text=True,
            timeout=60,
        )
        self.assertEqual(result.returncode, 1, result)
        self.assertIn("\nx = [ 1 4 40 0 ]\n", result.stdout)
        self.assert_whole(self.old)
        return result.stderr

    def test_solutions_are_in_the_current_folder(self):
        errors = self.search(self.scratch)
        (found,) = self.scratch.glob("knapsack.sol.found.*")
        self.assertIn(b"[ 1 4 40 0 ] | ", found.read_bytes())
        self.assertIn(f"*** The stars of this search are in {found.name}.\n", errors)
        self.assertIn(f"*** Could not write file: {self.sol}\n", errors)

    def test_solutions_are_printed_where_no_folder_has_room(self):
        self.assertIn(
            "*** The stars of this search are in its report only\n", self.search(self.folder)
        )
        self.assertEqual(list(self.folder.glob("*.found.*")), [])


@has_mounts
class FileMountedByItself(FaultCase):
    """As containers are given single files: it can't be replaced."""

    def test_old_file_stays_with_a_report(self):
        subprocess.run(["mount", "--bind", self.sol, self.sol], check=True)
        self.addCleanup(subprocess.run, ["umount", self.sol], check=True)
        self.assert_not_written(self.run_with())


@has_mounts
class Semaphores(FaultCase):
    def test_system_without_room_for_semaphores_is_reported(self):
        mount(self, SEMAPHORES, 4096)
        fill(SEMAPHORES)
        result = self.run_with()
        (SEMAPHORES / "rest").unlink()
        self.assert_refused(result, "SEM could not be opened", "ENOSPC")

    def test_room_for_some_semaphores_only_is_reported(self):
        mount(self, SEMAPHORES, 64 << 10)
        # Each takes a page.
        fill(SEMAPHORES, keep=4 * 4096)
        result = self.run_with()
        (SEMAPHORES / "rest").unlink()
        self.assert_refused(result, "SEM could not be opened", "ENOSPC")

    def test_system_without_semaphores_is_reported(self):
        mount(self, SEMAPHORES, 4096)
        subprocess.run(["mount", "-o", "remount,ro", SEMAPHORES], check=True)
        self.assert_refused(self.run_with(), "SEM could not be opened", "EROFS")

    def test_missing_folder_of_semaphores_is_reported(self):
        mount(self, "/dev", 4096)
        null = pathlib.Path("/dev/null")
        null.touch()
        result = self.run_with()
        self.assertEqual(
            (result.status, result.stderr), (1, failure("SEM could not be opened", "ENOENT"))
        )
        self.assert_whole(self.old)


if __name__ == "__main__":
    unittest.main()
