"""check-readme must say no to a README that is no longer true."""

import pathlib
import tempfile
import unittest

from tool import load

readme = load("tools/check-readme")

TEXT = """# Title

<!-- check: examples/x/x.opt -->
```
[ inf ]
```

<!-- run: examples/x x.sol -->

```text
solutions of x.sol
```
"""


class CheckReadme(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.addCleanup(setattr, readme, "ROOT", readme.ROOT)
        readme.ROOT = pathlib.Path(scratch.name)
        example = readme.ROOT / "examples" / "x"
        example.mkdir(parents=True)
        (example / "x.opt").write_text("[ inf ]\n")
        self.binary = readme.ROOT / "program"
        self.binary.write_text('#!/bin/sh\necho\necho "solutions of $1"\nrm x.opt\n')
        self.binary.chmod(0o755)

    def assert_one(self, hint, text):
        problems = readme.check(self.binary, text)
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(hint, problems[0])

    def test_true_readme_passes(self):
        self.assertEqual(readme.check(self.binary, TEXT), [])
        self.assertTrue((readme.ROOT / "examples" / "x" / "x.opt").exists(), "ran on no copy")

    def test_old_file_is_noticed(self):
        self.assert_one("should read\n[ inf ]", TEXT.replace("[ inf ]", "[ 1 ]"))

    def test_old_output_is_noticed(self):
        self.assert_one("solutions of x.sol", TEXT.replace("solutions of", "results of"))

    def test_mark_without_block_is_noticed(self):
        self.assert_one("no code block follows", TEXT.replace("-->\n```", "-->\nwords\n```"))

    def test_readme_without_marks_is_noticed(self):
        self.assertEqual(len(readme.check(self.binary, "# Title\n")), 2)

    def test_other_program_runs_with_its_arguments(self):
        other = self.binary.with_name("search")
        other.write_text('#!/bin/sh\necho "solutions of $2 with $1 after 3 sec(s)"\n')
        other.chmod(0o755)
        text = TEXT.replace("x x.sol -->", "x search --sol=1 x.opt -->").replace(
            "solutions of x.sol", "solutions of x.opt with --sol=1 after 0 sec(s)"
        )
        self.assertEqual(readme.check(self.binary, text), [])
        self.assert_one("should read\nsolutions of", text.replace("with --sol=1", "with --sol=2"))

    def test_commands_in_a_row_run_in_one_folder(self):
        for name, text in (("make", "echo $1 >made"), ("tell", "cat made x.opt; echo $1")):
            self.binary.with_name(name).write_text(f"#!/bin/sh\n{text}\n")
            self.binary.with_name(name).chmod(0o755)
        text = TEXT.replace("x x.sol -->", "x make a && tell b -->")
        text = text.replace("solutions of x.sol", "a\n[ inf ]\nb")
        self.assertEqual(readme.check(self.binary, text), [])
        self.assert_one("should read\na\n[ inf ]\nb", text.replace("a\n[", "c\n["))

    def test_long_readme_is_noticed(self):
        self.assert_one("must be under 155", TEXT + "\n" * 155)


if __name__ == "__main__":
    unittest.main()
