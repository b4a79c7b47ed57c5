"""star-check must say no to every kind of fault that a rewritten solution file can have."""

import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

from tool import ROOT, load

check = load("tools/star-check")
sys.path.insert(0, str(ROOT / "tools"))
import star_files  # noqa: E402

# Maximise x1 + 2 x2 with x1 + x2 <= 6 in the box 0..5.
OPT = "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ [ 1 1 ] ] [ -inf ] [ 6 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]"
OLD = "[ 1 2 ]\n[ 3 3 ] | 0 | [ ] | 0 | 7 | p | 2.4\n[ 5 5 ]\n[ 3 3 ] | 0 | [ ] | 0 | 8 | p\n"
FIRST = "[ 3 3 ] | -9 | [ 9 ] | 0 | 7 | p | 2.4\n"
SECOND = "[ 1 2 ] | -5 | [ 5 ] | 0 | -1 | \n"
GOAL = OPT.replace("[ inf ]", "[ 4 ]", 1)


class StarCheck(unittest.TestCase):
    def result(self, new, old=OLD, opt=OPT):
        """Exit status and what was told; a text of None is a missing file."""
        with tempfile.TemporaryDirectory() as scratch:
            paths = [pathlib.Path(scratch) / name for name in ("p.opt", "old.sol", "p.sol")]
            for path, text in zip(paths, (opt, old, new)):
                if text is not None:
                    path.write_text(text)
            told = io.StringIO()
            with contextlib.redirect_stdout(told), contextlib.redirect_stderr(told):
                status = check.main([str(path) for path in paths])
            return status, told.getvalue()

    def says_no(self, why, new, **texts):
        status, told = self.result(new, **texts)
        self.assertEqual(status, 1, told)
        self.assertIn(why, told)

    def says_yes(self, new, **texts):
        self.assertEqual(self.result(new, **texts), (0, ""))

    def test_right_file_passes(self):
        self.says_yes(FIRST + SECOND)

    def test_lost_star(self):
        self.says_no("lost: x = ['1', '2'] ''", FIRST)

    def test_lost_parameter_text(self):
        self.says_no("lost: x = ['3', '3'] 'p'", FIRST.replace("| p", "| q") + SECOND)

    def test_removed_file_with_right_stars(self):
        self.says_no("lost", None)

    def test_wrong_star_kept(self):
        wrong = "[ 5 5 ] | -15 | [ 15 ] | 0 | -1 | \n"
        self.says_no("violates the problem", wrong + FIRST + SECOND)

    def test_invented_star(self):
        invented = "[ 0 0 ] | 0 | [ 0 ] | 0 | -1 | \n"
        self.says_no("no right star of the old", FIRST + SECOND + invented)

    def test_wrong_target_value(self):
        self.says_no("target value 8 is not 9", FIRST.replace("[ 9 ]", "[ 8 ]") + SECOND)

    def test_missing_target_value(self):
        self.says_no("0 target values", FIRST.replace("[ 9 ]", "[ ]") + SECOND)

    def test_wrong_target_norm(self):
        self.says_no("target norm 9 is not -9", FIRST.replace("-9", "9") + SECOND)

    def test_wrong_slack_norm(self):
        new = "[ 1 2 ] | 1 | [ 5 ] | 0 | -1 | \n"
        self.says_no("slack norm 0 is not 1", new, old="[ 1 2 ]", opt=GOAL)

    def test_wrong_order(self):
        self.says_no("not in order", SECOND + FIRST)

    def test_unknown_time_before_known_time(self):
        old = "[ 1 2 ]\n[ 3 1 ] | 0 | [ ] | 0 | 99 |\n"
        known = "[ 3 1 ] | -5 | [ 5 ] | 0 | 99 | \n"
        self.says_yes(known + SECOND, old=old)
        self.says_no("not in order", SECOND + known, old=old)

    def test_duplicate(self):
        self.says_no("duplicate", FIRST + FIRST + SECOND)

    def test_worse_duplicate_kept(self):
        self.says_no("time 8, not that of the best, 7", FIRST.replace("| 7", "| 8") + SECOND)

    def test_lost_version(self):
        self.says_no("version text", FIRST.replace(" | 2.4", "") + SECOND)

    def test_file_left_behind_without_stars(self):
        self.says_yes(None, old="[ 5 5 ]")
        self.says_no("file without stars", "", old="[ 5 5 ]")
        self.says_no("file without stars", "// none\n", old=None)

    def test_six_digits_are_enough_and_five_are_not(self):
        opt = OPT.replace("[ [ 1 2 ] ]", "[ [ 1/3 0 ] ]")
        right = "[ 2 0 ] | -0.666667 | [ 2/3 ] | 0 | -1 | \n"
        self.says_yes(right, old="[ 2 0 ]", opt=opt)
        self.says_no("target norm", right.replace("0.666667", "0.66667"), old="[ 2 0 ]", opt=opt)
        self.says_no("target norm", right.replace("-0.666667", "-0.666668"), old="[ 2 0 ]", opt=opt)

    def test_fractions_are_exact(self):
        opt = OPT.replace("[ [ 1 2 ] ]", "[ [ 1/3 0 ] ]")
        new = "[ 2 0 ] | -666667/1000000 | [ 2/3 ] | 0 | -1 | \n"
        self.says_no("target norm", new, old="[ 2 0 ]", opt=opt)

    def test_zero_is_exact(self):
        new = "[ 0 0 ] | 1e-09 | [ 0 ] | 0 | -1 | \n"
        self.says_no("target norm", new, old="[ 0 0 ]")

    def test_tolerance_of_equations_is_none_of_rows(self):
        equation = "[ ] [ ] [ [ 1 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 9 ]"
        row = "[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 0 ] [ 3 ] [ 0 ] [ 0 ] [ 9 ]"
        new = "[ 3.0000000005 ] | 0 | [ ] | 0 | -1 | \n"
        self.says_yes(new, old="[ 3.0000000005 ]", opt=equation)
        self.says_no("violates the problem", new, old="[ 3.0000000005 ]", opt=row)

    def test_moduli(self):
        opt = "[ ] [ ] [ [ 1 ] [ 1 ] ] [ 1 4 ] [ 3 0 ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 9 ]"
        self.says_yes("[ 4 ] | 0 | [ ] | 0 | -1 | \n", old="[ 4 ] [ 7 ] [ 5 ]", opt=opt)
        self.says_no("violates", "[ 7 ] | 0 | [ ] | 0 | -1 | \n", old="[ 7 ]", opt=opt)

    def test_unusable_input(self):
        self.assertEqual(self.result(None, opt=None)[0], 2)
        self.assertEqual(self.result(None, opt=OPT + "[ 1 ]", old="[ x ]")[0], 2)
        self.assertEqual(self.result(None, old="[ 1 2 3 ]")[0], 2)
        self.assertEqual(self.result(None, old="/* open")[0], 2)
        with contextlib.redirect_stderr(io.StringIO()):
            self.assertEqual(check.main([]), 2)


class Numbers(unittest.TestCase):
    def test_forms(self):
        forms = {
            "010": "8", "-3:1/4": "-13/4", "0,25": "1/4", "1.50": "3/2", "1.2.3": "6/5",
            "-1/-2": "1/2", "1.5e2": "150", "1e-3": "1/1000", "1e": "1", "3.inf": "31/10",
        }  # fmt: skip
        for token, value in forms.items():
            self.assertEqual(star_files.number(token), star_files.Fraction(value), token)

    def test_refused_forms(self):
        signs = ("+-5", "--5", "3:-1/4")
        for token in ("", "1.0", "08", ".5", "1/0", "3:04/7", "3:5/4", "1e999999", *signs):
            with self.assertRaises(star_files.Unusable, msg=token):
                star_files.number(token)


if __name__ == "__main__":
    unittest.main()
