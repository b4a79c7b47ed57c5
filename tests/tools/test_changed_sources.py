"""changed-sources must name each file that a change can break, and all where it can't tell."""

import pathlib
import subprocess
import tempfile
import unittest

from tool import load

changed_sources = load("tools/changed-sources")

FILES = {
    "src/core/Array.h": "#pragma once\n",
    "src/core/Array.cpp": '#include "core/Array.h"\n',
    "src/core/Other.cpp": "#include <vector>\n",
    "src/core/Map.h": '#pragma once\n#include "core/Array.h"\n',
    "src/core/Map.inl": "#pragma once\n",
    "src/core/Map.cpp": '#include "core/Map.h"\n\n#  include "core/Map.inl"\n',
    "tests/unit/MapTest.cpp": '#include "Near.h"\n',
    "tests/unit/Near.h": '#include "core/Map.h"\n',
}


class ChangedSources(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = pathlib.Path(scratch.name)
        for name, text in FILES.items():
            self.write(name, text)
        self.git("init", "--quiet")
        self.base = self.commit()
        self.write("tools/lint-base", self.base + "\n")

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def git(self, *words):
        names = ("-c", "user.name=a", "-c", "user.email=a@localhost")
        command = ["git", "-C", str(self.root), *names, *words]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()

    def commit(self):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--message", "x")
        return self.git("rev-parse", "HEAD")

    def names(self, *folders):
        names, word = changed_sources.listed(self.root, folders or ("src",))
        self.assertEqual(word, "")
        return names

    def assert_all(self):
        names, word = changed_sources.listed(self.root, ("src",))
        self.assertNotEqual(word, "")
        self.assertEqual(
            sorted(names), ["src/core/Array.cpp", "src/core/Map.cpp", "src/core/Other.cpp"]
        )

    def test_no_change_lists_nothing(self):
        self.assertEqual(self.names("src", "tests"), [])

    def test_changed_source_is_listed_alone(self):
        self.write("src/core/Other.cpp", "\n")
        self.assertEqual(self.names("src", "tests"), ["src/core/Other.cpp"])

    def test_includers_of_a_header_are_listed_through_other_headers(self):
        self.write("src/core/Array.h", "#pragma once\n\n")
        self.assertEqual(
            self.names("src", "tests"),
            ["src/core/Array.cpp", "src/core/Map.cpp", "tests/unit/MapTest.cpp"],
        )

    def test_only_the_folders_asked_for_are_listed(self):
        self.write("src/core/Array.h", "#pragma once\n\n")
        self.assertEqual(self.names(), ["src/core/Array.cpp", "src/core/Map.cpp"])

    def test_includers_of_template_bodies_are_listed(self):
        self.write("src/core/Map.inl", "#pragma once\n\n")
        self.assertEqual(self.names("src", "tests"), ["src/core/Map.cpp"])

    def test_committed_change_counts(self):
        self.write("src/core/Other.cpp", "\n")
        self.commit()
        self.assertEqual(self.names(), ["src/core/Other.cpp"])

    def test_new_file_counts_before_it_is_added(self):
        self.write("src/core/New.cpp", "\n")
        self.assertEqual(self.names(), ["src/core/New.cpp"])

    def test_includers_of_a_removed_header_are_listed(self):
        (self.root / "src/core/Map.inl").unlink()
        self.assertEqual(self.names(), ["src/core/Map.cpp"])

    def test_includers_of_the_old_name_of_a_moved_header_are_listed(self):
        self.git("mv", "src/core/Map.inl", "src/core/Bodies.inl")
        self.assertEqual(self.names(), ["src/core/Map.cpp"])

    def test_without_a_record_all_are_listed(self):
        (self.root / "tools/lint-base").unlink()
        self.assert_all()

    def test_unknown_commit_lists_all(self):
        self.write("tools/lint-base", "0" * 40 + "\n")
        self.assert_all()

    def test_commit_of_another_branch_lists_all(self):
        self.git("checkout", "--quiet", "-b", "other")
        other = self.commit()
        self.git("checkout", "--quiet", self.base)
        self.write("tools/lint-base", other + "\n")
        self.assert_all()

    def test_word_that_is_no_commit_lists_all(self):
        self.write("tools/lint-base", "HEAD\n")
        self.assert_all()

    def test_changed_settings_list_all(self):
        self.write(".clang-tidy", "Checks: '*'\n")
        self.assert_all()

    def test_other_changes_list_nothing(self):
        self.write("README.md", "x\n")
        self.assertEqual(self.names(), [])


if __name__ == "__main__":
    unittest.main()
