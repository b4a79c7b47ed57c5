// LP and fixed MPS files as we read them, and what GLPK makes of the same files: glpsol rewrites
// them as free MPS, which is read again.
//
// GLPK keeps order and names, but for rows without a name, and of each number what fits into 12
// characters. Of the objective its MPS files have the coefficients only; the direction stands in
// the format of its own. What it refuses and we read, and the other way round, is listed.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "models/jobs/Export.h"
#include "models/read/ModelReader.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"
#include "models/write/ModelWriter.h"
#include "support/fixtures/GlpkExamples.h"
#include "support/fixtures/ModelDescription.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::examplesWith;
using test::Path;
using test::readOurs;
using test::succeeds;
using test::writtenExamples;

/// What GLPK writes of a double: at most 12 characters, so that numbers of 12 digits and fewer stay
/// as they are if they need no exponent.
std::string glpkNumber(double value) {
  std::array<char, 40> field{};
  for (int digits = 12; digits >= 6; --digits) {
    const bool isSmall = value != 0 && std::abs(value) < 0.002;
    std::snprintf(field.data(), field.size(), isSmall ? "%.*E" : "%.*G",
                  isSmall ? digits - 1 : digits, value);
    std::string text = field.data();
    const std::size_t exponent = text.find('E');
    if (exponent != std::string::npos)
      text.replace(exponent + 1, std::string::npos,
                   std::to_string(std::stoi(text.substr(exponent + 1))));
    if (text.size() <= 12) return text;
  }
  return "";
}

QQ asGlpkWrites(const QQ& value) {
  if (value.isInf()) return value;
  return parseNumber(glpkNumber(std::strtod(decimalText(value).c_str(), nullptr))).value();
}

void roundAll(std::vector<QQ>& values) {
  for (QQ& value : values) value = asGlpkWrites(value);
}

/// A bound that GLPK's digits round up to 1e20 is read as infinite.
void roundBounds(std::vector<QQ>& bounds) {
  static const QQ infinite = parseNumber("1e20").value();
  roundAll(bounds);
  for (QQ& bound : bounds)
    if (abs(bound) >= infinite) bound = bound.sign() ? QQ::infinity() : -QQ::infinity();
}

/// The lines of a model with what GLPK keeps of it.
std::string keptText(Model model) {
  model.objective.exists = true;
  roundAll(model.objective.coefficients);
  roundBounds(model.lower);
  roundBounds(model.upper);
  roundAll(model.rowLower);
  roundAll(model.rowUpper);
  for (std::size_t k = 0; k < model.entryCount(); ++k)
    model.entryValues.set(k, asGlpkWrites(model.entryValues[k]));
  return test::contentText(std::move(model));
}

/// The model that GLPK reads at `path` as "lp" or "mps", from the MPS file that it writes of it;
/// none if it refuses.
std::optional<Model> readGlpks(const Path& path, const std::string& form = "lp") {
  const test::ScratchDir folder;
  const std::string mps = folder.file("again.mps");
  if (!succeeds("timeout 60 glpsol --check --" + form + " '" + path.string() + "' --wfreemps " +
                mps + " --wglp " + folder.file("again.glp")))
    return std::nullopt;
  Model model = readOurs(mps);
  // "p mip max 3 4 5": the class, the direction and the sizes.
  const std::string problem = folder.read("again.glp");
  if (problem.find(" max ") < problem.find('\n')) model.objective.sense = ObjectiveSense::maximise;
  return model;
}

std::optional<Model> readOrRefuse(const Path& path) {
  try {
    return readOurs(path);
  } catch (const ModelError&) {
    return std::nullopt;
  }
}

/// Rows without a name are called "r.7" by GLPK if they end on line 7.
void takeNamesOfUnnamedRows(const NameTable& names, Model& theirs) {
  NameTable result;
  for (std::size_t i = 0; i < theirs.rowCount(); ++i) {
    const std::string_view name = theirs.rowNames[i];
    result.add(name.starts_with("r.") && i < names.size() ? names[i] : name);
  }
  theirs.rowNames = result;
}

void expectSame(const Model& ours, Model theirs, const Path& path) {
  takeNamesOfUnnamedRows(ours.rowNames, theirs);
  EXPECT_EQ(keptText(ours), keptText(theirs)) << path;
}

/// The corner files of a format, in the order of their names.
std::vector<Path> cornerFiles(const std::string& format) {
  std::vector<Path> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(
           Path(STARSIFT_SOURCE_FOLDER) / "tests" / "models" / format))
    if (entry.path().extension() == "." + format) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string nameOf(const Path& path) {
  return (path.parent_path().filename() / path.stem()).string();
}

TEST(GlpkLp, ReadsTheCornersOfTheFormatAsWeDo) {
  std::vector<std::string> onlyOurs;
  std::vector<std::string> onlyTheirs;
  int compared = 0;
  for (const Path& path : cornerFiles("lp")) {
    const std::optional<Model> ours = readOrRefuse(path);
    const std::optional<Model> theirs = readGlpks(path);
    if (ours && !theirs) onlyOurs.push_back(nameOf(path));
    if (!ours && theirs) onlyTheirs.push_back(nameOf(path));
    if (!ours || !theirs) continue;
    ++compared;
    expectSame(*ours, *theirs, path);
  }
  // Ranges, sums that it doesn't simplify, constants, spellings that its guide lacks.
  EXPECT_EQ(onlyOurs, (std::vector<std::string>{"bounds/both-downwards",
                                                "bounds/column-like-a-keyword-on-the-next-line",
                                                "bounds/flipped",
                                                "kinds/integer-by-gens",
                                                "layout/byte-order-mark",
                                                "layout/indented-keywords",
                                                "layout/subject-to",
                                                "objective/constant",
                                                "objective/empty",
                                                "objective/maximise",
                                                "objective/minimise",
                                                "rows/column-like-a-keyword-on-the-right-side",
                                                "rows/columns-on-both-sides",
                                                "rows/constants-on-both-sides",
                                                "rows/exponent-without-digits-is-a-name",
                                                "rows/flipped",
                                                "rows/fractions",
                                                "rows/glued-factor-on-the-right-side",
                                                "rows/label-of-digits",
                                                "rows/labelled-and-empty",
                                                "rows/labelled-without-columns",
                                                "rows/names-with-brackets",
                                                "rows/range-downwards",
                                                "rows/range-in-two-rows",
                                                "rows/range-over-lines",
                                                "rows/range-with-a-constant-inside",
                                                "rows/range-with-a-name-over-lines",
                                                "rows/range",
                                                "rows/repeated-terms-are-added",
                                                "rows/several-on-a-line",
                                                "rows/sign-chains",
                                                "rows/terms-that-cancel"}));
  // It makes a column of an unknown name, doesn't ask whether bounds leave a value, and takes a
  // keyword for one in column 1 only, and there always.
  EXPECT_EQ(onlyTheirs,
            (std::vector<std::string>{"bounds/glued-column", "bounds/unknown-column",
                                      "bounds/upper-below-zero-keeps-the-lower-bound",
                                      "layout/end-as-the-last-word-of-a-list",
                                      "layout/free-bound-or-list", "layout/general-constraints",
                                      "layout/keyword-in-a-list-without-indentation"}));
  EXPECT_GE(compared, 63);
}

/// Without the comments that make one row of two to us.
std::string withoutComments(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (!trimmed(line).starts_with('\\')) (result += line) += '\n';
  }
  return result;
}

TEST(GlpkLp, ReadsWhatWeWriteOfModelsAsWeDo) {
  const test::ScratchDir folder;
  std::vector<std::string> refusals;
  int compared = 0;
  for (const Path& path : cornerFiles("mps")) {
    const std::optional<Model> model = readOrRefuse(path);
    if (!model) continue;
    const Path lp =
        folder.write("written.lp", withoutComments(writeModel(*model, ModelFormat::lp).text));
    const std::optional<Model> theirs = readGlpks(lp);
    if (theirs)
      expectSame(readOurs(lp), *theirs, path);
    else
      refusals.push_back(nameOf(path));
    ++compared;
  }
  // It takes names of 255 plain letters at most, no fractions and no constant in the objective.
  EXPECT_EQ(refusals,
            (std::vector<std::string>{"layout/latin-1-names", "layout/names-of-300-letters",
                                      "layout/no-columns", "layout/utf-8-names", "numbers/fraction",
                                      "objective/negative-right-side",
                                      "objective/right-side-is-minus-the-constant"}));
  EXPECT_GE(compared, 80);
}

TEST(GlpkLp, ReadsWhatWeWriteOfProblemsAsWeDo) {
  const test::ScratchDir folder;
  std::vector<std::string> refusals;
  int compared = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(Path(STARSIFT_SOURCE_FOLDER) / "examples")) {
    if (entry.path().extension() != ".opt") continue;
    const std::string name = entry.path().stem().string() + ".lp";
    const std::string lp = folder.file(name);
    exportModel(entry.path().string(), lp, {});
    folder.write(name, withoutComments(readModelText(lp).view()));
    const std::optional<Model> theirs = readGlpks(lp);
    if (theirs)
      expectSame(readOurs(lp), *theirs, entry.path());
    else
      refusals.push_back(name);
    ++compared;
  }
  // Coefficients without a decimal.
  EXPECT_EQ(refusals, (std::vector<std::string>{"thirds.lp"}));
  EXPECT_GE(compared, 14);
}

/// A model whose columns are integer, named like keywords and also "free", in free MPS.
std::string modelOfKeywords() {
  std::string columns;
  std::string bounds;
  bool isFree = false;
  for (const std::string name :
       {"max", "minimize", "st", "s.t.", "bounds", "free", "bound", "gen", "integer", "binary",
        "bin", "semis", "sos1", "pwlobj", "scenarios", "gencons", "end", "x", "END"}) {
    columns += " " + name + " cost 123456 c1 -234567\n " + name + " c2 1\n";
    isFree = !isFree;
    bounds += (isFree ? " FR b " : " UP b ") + name + " 7\n";
  }
  return "NAME t\nROWS\n N cost\n L c1\n G c2\nCOLUMNS\n M1 'MARKER' 'INTORG'\n" + columns +
         " M2 'MARKER' 'INTEND'\nRHS\n RHS c1 8 c2 2\nBOUNDS\n" + bounds + "ENDATA\n";
}

TEST(GlpkLp, WritesColumnsNamedLikeKeywordsAsWeReadThem) {
  const test::ScratchDir folder;
  const Path mps = folder.write("keywords.mps", modelOfKeywords());
  const std::string lp = folder.file("written.lp");
  ASSERT_TRUE(succeeds("glpsol --check --freemps '" + mps.string() + "' --wlp " + lp));
  const std::optional<Model> theirs = readGlpks(lp);
  ASSERT_TRUE(theirs);
  EXPECT_EQ(theirs->columnCount(), 19U);
  expectSame(readOurs(lp), *theirs, lp);
}

/// GLPK writes "_" for blanks in names.
NameTable withoutBlanks(const NameTable& names) {
  NameTable result;
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::string name(names[i]);
    std::replace(name.begin(), name.end(), ' ', '_');
    result.add(name);
  }
  return result;
}

TEST(GlpkMps, ReadsItsExamplesInFixedColumnsAsWeDo) {
  int compared = 0;
  for (const Path& path : examplesWith(".mps")) {
    const std::optional<Model> theirs = readGlpks(path, "mps");
    ASSERT_TRUE(theirs) << path;
    Model ours = readOurs(path);
    ours.rowNames = withoutBlanks(ours.rowNames);
    ours.columnNames = withoutBlanks(ours.columnNames);
    expectSame(ours, *theirs, path);
    ++compared;
  }
  EXPECT_GE(compared, 7);
}

TEST(GlpkLp, ReadsItsExamplesAsWeDo) {
  std::vector<Path> paths = examplesWith(".lp");
  EXPECT_GE(paths.size(), 2U);
  for (const test::WrittenExample& example : writtenExamples()) paths.push_back(example.lp);
  EXPECT_GE(paths.size(), 32U);
  for (const Path& path : paths) {
    const std::optional<Model> theirs = readGlpks(path);
    ASSERT_TRUE(theirs) << path;
    expectSame(readOurs(path), *theirs, path);
  }
}

}  // namespace
}  // namespace starsift
