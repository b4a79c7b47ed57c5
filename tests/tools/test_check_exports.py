"""check-exports must say no to each name that isn't of the header, and to an empty table."""

import unittest

from tool import load

exports = load("tools/check-exports")

RIGHT = """\
0000000000002f7c T starsift::v1::check(starsift::v1::Problem const&)
0000000000049500 T starsift::v1::Search::run(std::stop_token const&) const
00000000002b4e98 V vtable for starsift::v1::Error
"""


class CheckExports(unittest.TestCase):
    def test_names_of_the_header_are_fine(self):
        self.assertEqual(exports.check(RIGHT), [])

    def test_a_name_of_the_inside_is_refused(self):
        for name in ("starsift::Seek::run()", "vtable for starsift::QQ", "std::vector<int>::size()"):
            with self.subTest(name=name):
                table = f"{RIGHT}0000000000002f7c W {name}\n"
                self.assertEqual(exports.check(table), [f"exports {name}"])

    def test_a_missing_name_is_refused(self):
        self.assertEqual(len(exports.check("")), 3)


if __name__ == "__main__":
    unittest.main()
