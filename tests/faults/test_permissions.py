"""Files and folders that may not be written or read, links, owners and modes."""

import os
import stat
import unittest

from faulty import NOBODY, FaultCase, NoRightStarCase, error, is_root


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


class LongName(FaultCase):
    # The longest name of a file that this system takes: the new file's is shorter.
    name = "n" * 251

    def test_file_is_replaced(self):
        self.assert_done(self.run_with())

    def test_unwritten_file_is_named(self):
        self.assert_not_written(self.run_with(error("renameat", 1, "EIO")))


if __name__ == "__main__":
    unittest.main()
