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

    def test_long_readme_is_noticed(self):
        self.assert_one("must be under 120", TEXT + "\n" * 120)


if __name__ == "__main__":
    unittest.main()
