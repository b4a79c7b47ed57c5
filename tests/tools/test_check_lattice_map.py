"""check-lattice-map must say no to each way in which the map can be wrong."""

import pathlib
import tempfile
import unittest

from tool import load

lattice_map = load("tools/check-lattice-map")

HEADER = """#pragma once

template <class T, class R>
class Lattice : public Vanu<T> {
 public:
  using Base = Vanu<T>;

  struct Pass {
    Index k = 1;
  };

  // Construction, reset: LatticeRecord.inl
  Lattice();
  ~Lattice() override = default;
  template <class U>
  void assignFrom(const Lattice<U, R>& source, bool keepParams);
  Lattice& operator=(const Lattice& other);

  // Scores of a vector: LatticeScore.inl
  /// R of the vector; see "the score (raw)".
  R score(Index row, const std::vector<Index>& columns = {},
          bool raw = false) const;
  std::function<void(Index)> observer() const;

 private:
  // Number of rows, 0 when empty.
  Index n = 0;
  Matrix<T> B;  // n x m, rows are the basis
  std::function<void(Index)> hook;  // called after a move
};
"""

RECORD = """template <class T, class R>
Lattice<T, R>::Lattice() = default;
template <class T, class R>
Lattice<T, R>::Lattice() {}
template <class T, class R>
template <class U>
void Lattice<T, R>::assignFrom(const Lattice<U, R>& source, bool keepParams) {}
template <class T, class R>
Lattice<T, R>& Lattice<T, R>::operator=(const Lattice& other) { return *this; }
"""

SCORE = """template <class T, class R>
R Lattice<T, R>::score(Index row, const std::vector<Index>& columns, bool raw) const {}
template <class T, class R>
std::function<void(Index)> Lattice<T, R>::observer() const {}
"""


class CheckLatticeMap(unittest.TestCase):
    def problems(self, header=HEADER, record=RECORD, score=SCORE, more=None):
        with tempfile.TemporaryDirectory() as scratch:
            folder = pathlib.Path(scratch)
            files = {"Lattice.h": header, "LatticeRecord.inl": record, "LatticeScore.inl": score}
            for name, text in {**files, **(more or {})}.items():
                if text is not None:
                    (folder / name).write_text(text)
            return lattice_map.check(folder)

    def assert_one(self, hint, **changes):
        problems = self.problems(**changes)
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(hint, problems[0])

    def test_true_map_passes(self):
        self.assertEqual(self.problems(), [])

    def test_missing_file_is_noticed(self):
        self.assert_one("LatticeScore.inl does not exist", score=None)

    def test_file_without_group_is_noticed(self):
        self.assert_one("LatticeLll.inl is named by no group", more={"LatticeLll.inl": ""})

    def test_function_defined_elsewhere_is_noticed(self):
        problems = self.problems(record=RECORD + SCORE, score="")
        self.assertEqual(len(problems), 2, problems)
        self.assertIn("score is not defined in LatticeScore.inl", problems[0])

    def test_missing_operator_is_noticed(self):
        record = RECORD.replace("operator=", "assign")
        self.assert_one("operator is not defined in LatticeRecord.inl", record=record)

    def test_template_member_is_noticed(self):
        record = RECORD.replace("::assignFrom(", "::assign(")
        self.assert_one("assignFrom is not defined", record=record)

    def test_body_in_the_map_is_noticed(self):
        header = HEADER.replace("  Lattice();", "  Lattice();\n  void clear() { n = 0; }")
        self.assert_one("clear has a body here", header=header)

    def test_function_without_group_is_noticed(self):
        header = HEADER.replace("  using Base", "  void stray();\n  using Base")
        self.assert_one("stray stands in no group", header=header)

    def test_data_member_without_comment_is_noticed(self):
        self.assert_one("Matrix B", header=HEADER.replace("<T> B;  // n x m, rows are the basis", " B;"))
        self.assert_one("Index n = 0", header=HEADER.replace("  // Number of rows, 0 when empty.\n", ""))

    def test_comment_of_the_member_above_is_not_enough(self):
        header = HEADER.replace("hook;  // called after a move", "hook;")
        self.assert_one("no comment on data member: std::function", header=header)

    def test_header_without_the_class_is_noticed(self):
        self.assertTrue(self.problems(header="#pragma once\n"))


if __name__ == "__main__":
    unittest.main()
