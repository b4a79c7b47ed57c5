"""The picture of a reduction, drawn by gnuplot.

The environment names the program (SEARCH_PROGRAM).
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = pathlib.Path(os.environ["SEARCH_PROGRAM"]).resolve()
SVG = "{http://www.w3.org/2000/svg}"


class Profile(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="profile-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copyfile(ROOT / "examples/market-split/market-split.opt", self.folder / "p.opt")

    def search(self, *arguments, **environment):
        return subprocess.run(
            [PROGRAM, *arguments, "p.opt"],
            cwd=self.folder,
            env=dict(os.environ, **environment),
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
            timeout=120,
        )

    def names(self):
        return {path.name for path in self.folder.iterdir()}

    @unittest.skipUnless(shutil.which("gnuplot"), "gnuplot isn't installed")
    def test_three_curves_are_drawn_and_the_search_is_the_same(self):
        result = self.search("--profile=a.svg", "--beta=15")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        picture = xml.etree.ElementTree.parse(self.folder / "a.svg")
        self.assertEqual(picture.getroot().tag, SVG + "svg")
        texts = ["".join(text.itertext()).strip() for text in picture.iter(SVG + "text")]
        for name, times in (("before", 1), ("LLL", 2), ("blocks of 15", 2)):
            self.assertEqual(texts.count(name), times, texts)
        solution = (self.folder / "p.sol").read_text().partition("]")[0]
        (self.folder / "p.sol").unlink()
        self.search()
        self.assertEqual((self.folder / "p.sol").read_text().partition("]")[0], solution)

    def test_without_gnuplot_nothing_is_searched(self):
        result = self.search("--profile=a.svg", PATH="/nowhere")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(
            result.stderr,
            "\n*** FAIL: --profile needs gnuplot, which can't be run: it is in the package "
            "gnuplot-nox\n",
        )
        self.assertEqual(self.names(), {"p.opt"})

    @unittest.skipUnless(shutil.which("gnuplot"), "gnuplot isn't installed")
    def test_picture_that_cannot_be_written_ends_the_search(self):
        (self.folder / "a.svg").mkdir()
        result = self.search("--profile=a.svg")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, "\n*** FAIL: Could not write file: a.svg\n")
        self.assertEqual(self.names(), {"p.opt", "a.svg"})

    @unittest.skipUnless(shutil.which("gnuplot"), "gnuplot isn't installed")
    def test_problem_without_a_lattice_is_searched_without_a_picture(self):
        (self.folder / "p.opt").write_text(
            "[ ] [ ] [ [ 2 -3 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ inf inf ]\n"
        )
        result = self.search("--profile=a.svg")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(
            result.stderr,
            "*** No profile: the complete search has no lattice in a finite box\n",
        )
        self.assertEqual(self.names(), {"p.opt", "p.sol", "p.lat"})

    def test_other_endings_are_refused(self):
        result = self.search("--profile=a.png")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, "\n*** FAIL: Malformed parameter: profile=a.png\n")


if __name__ == "__main__":
    unittest.main()
