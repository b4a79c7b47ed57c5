"""What the shell completes."""

import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "completion" / "starsift.bash"


def completions(folder, line):
    """The words that bash offers at the end of a line; it divides the line at "=" as well."""
    words = line.replace("=", " = ").split(" ")
    words = [word for word in words[:-1] if word] + words[-1:]
    script = f"""
        source {SCRIPT}
        COMP_WORDS=({" ".join(f"'{word}'" for word in words)})
        COMP_CWORD={len(words) - 1}
        _{words[0]}
        printf '%s\\n' "${{COMPREPLY[@]}}"
    """
    shell = subprocess.run(
        ["bash", "-c", script], cwd=folder, stdout=subprocess.PIPE, text=True, check=True
    )
    return set(shell.stdout.split())


class Completion(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ("a.opt", "a.sol", "m.mps", "m.lp.gz", "cbc.txt"):
            (self.folder / name).touch()

    def assert_offers(self, line, *words):
        self.assertEqual(completions(self.folder, line), set(words))

    def test_offers_the_files_of_each_command(self):
        self.assert_offers("starsift ", "a.sol")
        self.assert_offers("starseek ", "a.opt")
        self.assert_offers("starport m", "m.mps", "m.lp.gz")

    def test_offers_values_behind_blanks_and_equals_signs(self):
        for between in (" ", "="):
            self.assert_offers(f"starport --for{between}c", "cbc")
            self.assert_offers(f"starport --format{between}", "mps", "lp", "opb")
            self.assert_offers(f"starport --record{between}a", "all")
            self.assert_offers(f"starport m.mps --solution{between}cb", "cbc.txt")

    def test_offers_options(self):
        self.assert_offers("starport --so", "--solution", "--solution-of")
        self.assert_offers("starseek --pro", "--prove", "--prove=0", "--profile=")


if __name__ == "__main__":
    unittest.main()
