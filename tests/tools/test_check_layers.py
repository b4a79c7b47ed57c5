"""check-layers must say no to each thing it forbids."""

import pathlib
import tempfile
import unittest

from tool import load

layers = load("tools/check-layers")

HEADER = "#pragma once\n"


class CheckLayers(unittest.TestCase):
    def problems(self, files):
        with tempfile.TemporaryDirectory() as scratch:
            source = pathlib.Path(scratch)
            for name, text in files.items():
                (source / name).parent.mkdir(parents=True, exist_ok=True)
                (source / name).write_text(text)
            return layers.check(source)

    def assert_one(self, hint, files):
        problems = self.problems(files)
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(hint, problems[0])

    def test_downward_includes_are_fine(self):
        files = {
            "core/Index.h": HEADER,
            "numbers/QQ.h": HEADER + '#include <gmp.h>\n#include "core/Index.h"\n',
            "numbers/QQ.cpp": '#include "numbers/QQ.h"\n',
        }
        self.assertEqual(self.problems(files), [])

    def test_upward_include_is_refused(self):
        files = {"core/Index.h": HEADER + '#include "numbers/QQ.h"\n', "numbers/QQ.h": HEADER}
        self.assert_one("core must not include numbers/QQ.h", files)

    def test_app_sees_no_number_type(self):
        files = {"app/Run.h": HEADER + '#include "numbers/QQ.h"\n', "numbers/QQ.h": HEADER}
        self.assert_one("app must not include numbers/QQ.h", files)

    def test_app_sees_no_models(self):
        files = {"app/Run.h": HEADER + '#include "models/A.h"\n', "models/A.h": HEADER}
        self.assert_one("app must not include models/A.h", files)

    def test_the_room_for_models_sees_them_and_no_lattice(self):
        files = {
            "app/port/Run.h": HEADER + '#include "models/A.h"\n#include "lattice/B.h"\n',
            "models/A.h": HEADER,
            "lattice/B.h": HEADER,
        }
        self.assert_one("must not include lattice/B.h", files)

    def test_the_library_sees_models_and_is_seen_by_none(self):
        files = {
            "library/Run.h": HEADER + '#include "models/A.h"\n#include "app/B.h"\n',
            "models/A.h": HEADER,
            "app/B.h": HEADER + '#include "library/Run.h"\n',
        }
        self.assert_one("app must not include library/Run.h", files)

    def test_included_cpp_is_refused(self):
        files = {"core/A.cpp": '#include "core/B.cpp"\n', "core/B.cpp": ""}
        self.assert_one("never included", files)

    def test_angle_brackets_do_not_hide_an_include(self):
        files = {"core/A.h": HEADER + "#include <numbers/QQ.h>\n"}
        self.assert_one("with quotes", files)

    def test_include_without_floor_is_refused(self):
        self.assert_one("write floor/File.h", {"core/A.cpp": '#include "B.h"\n'})

    def test_include_of_nothing_is_refused(self):
        self.assert_one("does not exist", {"core/A.cpp": '#include "core/B.h"\n'})

    def test_missing_pragma_once_is_refused(self):
        self.assert_one("#pragma once", {"core/A.inl": "int a;\n"})

    def test_long_file_is_refused(self):
        self.assertEqual(self.problems({"core/A.cpp": "\n" * 500}), [])
        self.assert_one("501 lines", {"core/A.cpp": "\n" * 501})

    def test_unknown_floor_is_refused(self):
        self.assert_one("not in a folder", {"util/A.cpp": ""})

    def test_unknown_room_is_refused(self):
        self.assert_one("no room", {"algorithms/fast/A.cpp": ""})
        self.assert_one("no room", {"algorithms/exact/fast/A.cpp": ""})
        self.assert_one("no room", {"core/exact/A.cpp": ""})
        self.assertEqual(self.problems({"algorithms/exact/A.cpp": ""}), [])

    def test_floor_beside_the_house_sees_its_own_floors_only(self):
        header = {"algorithms/exact/A.h": HEADER, "problem/B.h": HEADER}
        judge = HEADER + '#include "algorithms/exact/A.h"\n'
        self.assertEqual(self.problems({**header, "certificates/J.h": judge}), [])
        judge = HEADER + '#include "problem/B.h"\n'
        self.assert_one("must not include problem/B.h", {**header, "certificates/J.h": judge})

    def test_no_floor_sees_the_one_beside_the_house(self):
        files = {"certificates/J.h": HEADER}
        include = HEADER + '#include "certificates/J.h"\n'
        for user in ("algorithms/exact/A.h", "lattice/A.h", "app/A.h"):
            self.assert_one("must not include certificates/J.h", {**files, user: include})

    def test_empty_folder_is_refused(self):
        self.assert_one("no source files", {})


if __name__ == "__main__":
    unittest.main()
