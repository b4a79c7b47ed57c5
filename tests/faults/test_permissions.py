"""Files and folders that may not be written or read, links, owners, modes and access lists."""

import errno
import os
import pathlib
import stat
import struct
import unittest

from faulty import NOBODY, PROGRAM, FaultCase, NoRightStarCase, error, failure, is_root

SEEK = pathlib.Path(PROGRAM).with_name("starseek")
ACCESS_LIST = "system.posix_acl_access"
DEFAULT_LIST = "system.posix_acl_default"


def access_list(*entries):
    """The bytes of a list of (tag, rights, id) as the system stores them."""
    return struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)


OWNER, USER, GROUP, MASK, OTHERS = 0x01, 0x02, 0x04, 0x10, 0x20
NO_ID = 0xFFFFFFFF
# Bits of the group in the mode: the mask, not the rights of the group.
SHARED_WITH_ONE = access_list(
    (OWNER, 6, NO_ID), (USER, 6, 1234), (GROUP, 0, NO_ID), (MASK, 6, NO_ID), (OTHERS, 0, NO_ID)
)


class AsNobody(FaultCase):
    """Everything belongs to the user of the run, whom modes stop."""

    def setUp(self):
        super().setUp()
        if os.geteuid() == 0:
            self.give_to_nobody()
        self.addCleanup(self.open_all)

    def open_all(self):
        self.folder.chmod(0o755)
        for path in self.folder.iterdir():
            path.chmod(0o644)

    def run_with(self, fault=None, **options):
        if os.geteuid() == 0:
            options.setdefault("user", NOBODY)
        return super().run_with(fault, **options)


class Modes(AsNobody):
    def test_read_only_file_is_left_alone(self):
        self.sol.chmod(0o444)
        result = self.run_with()
        self.assertEqual((result.status, result.stdout, result.stderr), (0, self.report, ""))
        self.assert_whole(self.old)
        self.assert_nothing_left(result)

    def test_unreadable_solutions_end_the_run_and_stay(self):
        for mode in (0o000, 0o200):
            with self.subTest(mode=mode):
                self.sol.chmod(mode)
                result = self.run_with()
                self.sol.chmod(0o644)
                self.assert_refused(result, "Could not read sol file: knapsack.sol")

    def test_unreadable_problem_ends_the_run(self):
        (self.folder / "knapsack.opt").chmod(0)
        self.assert_refused(self.run_with(), "Could not read opt file: knapsack.opt")

    def test_solutions_behind_a_closed_folder_end_the_run_and_stay(self):
        closed = self.scratch / "closed"
        closed.mkdir()
        self.sol.rename(closed / "far.sol")
        self.sol.symlink_to(closed / "far.sol")
        closed.chmod(0)
        result = self.run_with()
        closed.chmod(0o755)
        self.assert_refused(result, "Could not read sol file: knapsack.sol")
        self.assertTrue(self.sol.is_symlink())

    @is_root
    def test_folder_without_the_right_to_enter_ends_the_run(self):
        # Root enters it and becomes nobody there.
        self.folder.chmod(0o600)
        result = self.run_with()
        self.folder.chmod(0o755)
        self.assert_refused(result, "Could not read opt file: knapsack.opt")

    def test_read_only_folder_has_its_file_rewritten(self):
        self.folder.chmod(0o555)
        self.assert_done(self.run_with())


class WithoutRightStars(NoRightStarCase, AsNobody):
    def test_file_in_a_read_only_folder_is_emptied(self):
        self.folder.chmod(0o555)
        self.assert_done(self.run_with())
        self.assertTrue(self.sol.exists())

    def test_read_only_file_stays(self):
        self.sol.chmod(0o444)
        result = self.run_with()
        self.assertEqual((result.status, result.stdout, result.stderr), (0, "\n\n", ""))
        self.assert_whole(self.old)

    def test_other_name_of_the_file_stays(self):
        other = self.folder / "other"
        os.link(self.sol, other)
        self.assert_done(self.run_with())
        self.assertFalse(self.sol.exists())
        self.assertEqual(other.read_bytes(), self.old)


class Links(FaultCase):
    def test_other_name_of_the_file_keeps_the_old_text(self):
        other = self.folder / "other"
        os.link(self.sol, other)
        self.assert_done(self.run_with())
        self.assertEqual(other.read_bytes(), self.old)

    def test_target_of_a_link_gets_the_new_text(self):
        far = self.scratch / "far"
        far.mkdir()
        self.sol.rename(far / "target")
        self.sol.symlink_to(far / "target")
        self.assert_done(self.run_with())
        self.assertTrue(self.sol.is_symlink())
        self.assertEqual([path.name for path in far.iterdir()], ["target"])


class Owners(FaultCase):
    def test_mode_stays(self):
        for mode in (0o600, 0o640, 0o666, 0o755, 0o2664):
            with self.subTest(mode=oct(mode)):
                self.restore()
                self.sol.chmod(mode)
                self.assert_done(self.run_with(umask=0o077))
                self.assertEqual(stat.S_IMODE(os.stat(self.sol).st_mode), mode)

    @is_root
    def test_owner_stays_under_root(self):
        os.chown(self.sol, NOBODY, 12345)
        self.assert_done(self.run_with())
        status = os.stat(self.sol)
        self.assertEqual((status.st_uid, status.st_gid), (NOBODY, 12345))

    @is_root
    def test_file_of_somebody_else_stays_theirs(self):
        self.folder.chmod(0o777)
        self.sol.chmod(0o666)
        self.assert_done(self.run_with(user=NOBODY))
        self.assertEqual(os.stat(self.sol).st_uid, 0)

    @is_root
    def test_file_of_somebody_else_in_a_sticky_folder_stays_theirs(self):
        self.folder.chmod(0o1777)
        self.sol.chmod(0o666)
        self.assert_done(self.run_with(user=NOBODY))
        self.assertEqual(os.stat(self.sol).st_uid, 0)


class AccessLists(FaultCase):
    def setUp(self):
        super().setUp()
        self.set_list(self.sol, SHARED_WITH_ONE)

    def set_list(self, path, bytes_, name=ACCESS_LIST):
        try:
            os.setxattr(path, name, bytes_)
        except OSError as failed:
            if failed.errno != errno.ENOTSUP:
                raise
            self.skipTest("no access lists here")

    def list_of(self, path):
        return os.getxattr(path, ACCESS_LIST) if ACCESS_LIST in os.listxattr(path) else None

    def mode(self):
        return stat.S_IMODE(os.stat(self.sol).st_mode)

    def test_list_stays(self):
        self.assert_done(self.run_with())
        self.assertEqual(self.list_of(self.sol), SHARED_WITH_ONE)
        self.assertEqual(self.mode(), 0o660)

    def test_list_that_cannot_be_copied_gives_rights_to_nobody(self):
        # The list is read in two calls: how long it is, and what it says.
        for call, number in (("fgetxattr", 1), ("fgetxattr", 2), ("fsetxattr", 1)):
            with self.subTest(call=call, number=number):
                self.restore()
                self.set_list(self.sol, SHARED_WITH_ONE)
                result = self.run_with(error(call, number, "EIO"))
                self.assertEqual(
                    (result.status, result.stderr),
                    (
                        0,
                        f"*** The access list of {self.sol.name} could not be copied: "
                        "only its owner may access it now\n",
                    ),
                )
                self.assert_whole(self.new)
                self.assertEqual((self.list_of(self.sol), self.mode()), (None, 0o600))

    def test_list_of_the_folder_that_cannot_be_removed_gives_rights_to_nobody(self):
        os.removexattr(self.sol, ACCESS_LIST)
        self.set_list(self.folder, SHARED_WITH_ONE, DEFAULT_LIST)
        result = self.run_with(error("fremovexattr", 1, "EIO"))
        self.assertEqual(result.status, 0)
        self.assertIn("could not be copied", result.stderr)
        self.assert_whole(self.new)
        self.assertEqual(self.mode(), 0o600)

    def test_list_for_new_files_of_the_folder_is_none_for_a_file_without(self):
        os.removexattr(self.sol, ACCESS_LIST)
        self.sol.chmod(0o640)
        self.set_list(self.folder, SHARED_WITH_ONE, DEFAULT_LIST)
        self.assert_done(self.run_with())
        self.assertEqual((self.list_of(self.sol), self.mode()), (None, 0o640))

    def test_new_file_has_the_list_of_the_folder(self):
        self.set_list(self.folder, SHARED_WITH_ONE, DEFAULT_LIST)
        self.sol.unlink()
        result = self.run_with(command=(SEEK, "--sol=1", "knapsack.opt"), argument=False)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(self.list_of(self.sol), SHARED_WITH_ONE)


@is_root
class PlantedLinks(FaultCase):
    """A folder like /tmp, in which somebody else has put a link to a file of the user."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o1777)
        self.victim = self.scratch / "victim"
        self.victim.write_text("precious")

    def plant(self, path, owner=NOBODY):
        path.unlink(missing_ok=True)
        path.symlink_to(self.victim)
        os.lchown(path, owner, owner)

    def refusal(self, name):
        return f"Link of another user on the way to file: {name}"

    def test_solutions_behind_a_link_are_refused(self):
        for mode in (0o1777, 0o777, 0o1755):
            with self.subTest(mode=oct(mode)):
                self.folder.chmod(mode)
                self.plant(self.sol)
                result = self.run_with()
                self.assertEqual(result.status, 1)
                self.assertEqual(result.stderr, failure(self.refusal(self.sol.name)))
                self.assertEqual(self.victim.read_text(), "precious")

    def test_folder_behind_a_link_is_refused(self):
        inner = self.folder / "inner"
        self.victim = self.scratch / "other"
        self.victim.mkdir()
        self.plant(inner)
        for suffix in (".opt", ".sol"):
            (self.victim / f"knapsack{suffix}").write_bytes(
                self.sol.with_suffix(suffix).read_bytes()
            )
        result = self.run_with(command=(PROGRAM, "inner/knapsack.sol"), argument=False)
        self.assertEqual(result.stderr, failure(self.refusal("inner/knapsack.sol")))
        self.assertEqual((self.victim / "knapsack.sol").read_bytes(), self.old)

    def test_file_that_is_swapped_for_a_link_is_not_written(self):
        for call in ("create", "write", "fsync"):
            with self.subTest(call=call):
                self.sol.unlink()
                self.restore()
                process = self.stopped(call)
                self.plant(self.sol)
                result = self.go_on(process)
                self.assertEqual(result.stderr, failure(self.refusal(self.sol.name)))
                self.assertEqual(result.status, 1)
                self.assertEqual(self.victim.read_text(), "precious")
                self.assert_nothing_left(result)

    def test_lattice_behind_a_link_is_not_written_and_costs_nothing_else(self):
        self.plant(self.sol.with_suffix(".lat"))
        result = self.run_with(command=(SEEK, "--sol=1", "knapsack.opt"), argument=False)
        self.assertEqual(result.stderr, f"*** {self.refusal('knapsack.lat')}\n")
        self.assertEqual(result.status, 0)
        self.assertEqual(self.victim.read_text(), "precious")
        self.assertTrue(self.sol.with_suffix(".lat").is_symlink())

    def test_solutions_swapped_for_a_link_leave_those_of_a_search_beside(self):
        process = self.stopped(
            "create", command=(SEEK, "--sol=1", "knapsack.opt"), argument=False
        )
        self.plant(self.sol)
        result = self.go_on(process)
        self.assertEqual(result.status, 1)
        self.assertIn(self.refusal(self.sol.name), result.stderr)
        self.assertEqual(self.victim.read_text(), "precious")
        (found,) = self.folder.glob("knapsack.sol.found.*")
        self.assertIn("[ 0 1 36 5 ]", found.read_text())

    def test_links_of_the_user_are_followed(self):
        self.victim.write_bytes(self.old)
        self.plant(self.sol, owner=0)
        self.assert_done(self.run_with())
        self.assertEqual(self.victim.read_bytes(), self.new)

    def test_links_in_a_folder_of_the_user_are_followed_whoever_made_them(self):
        self.folder.chmod(0o755)
        self.victim.write_bytes(self.old)
        self.plant(self.sol)
        self.assert_done(self.run_with())
        self.assertEqual(self.victim.read_bytes(), self.new)


class LongName(FaultCase):
    # The longest name of a file that this system takes: the new file's is shorter.
    name = "n" * 251

    def test_file_is_replaced(self):
        self.assert_done(self.run_with())

    def test_unwritten_file_is_named(self):
        self.assert_not_written(self.run_with(error("renameat", 1, "EIO")))


if __name__ == "__main__":
    unittest.main()
