#include "models/read/MpsReader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "models/read/ByteOrderMark.h"
#include "models/read/MpsCards.h"
#include "models/read/MpsColumns.h"
#include "models/read/MpsRows.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

struct SectionWord {
  std::string_view word;
  MpsSection section;
};
constexpr std::array<SectionWord, 7> sectionWords{{{"OBJSENSE", MpsSection::objectiveSense},
                                                   {"OBJNAME", MpsSection::objectiveName},
                                                   {"ROWS", MpsSection::rows},
                                                   {"COLUMNS", MpsSection::columns},
                                                   {"RHS", MpsSection::rightSides},
                                                   {"RANGES", MpsSection::ranges},
                                                   {"BOUNDS", MpsSection::bounds}}};

/// Sections whose content a linear model can't have.
struct Refusal {
  std::string_view word;
  std::string_view what;
};
constexpr std::array<Refusal, 16> refusals{{{"SOS", "special ordered sets"},
                                            {"SOS1", "special ordered sets"},
                                            {"SOS2", "special ordered sets"},
                                            {"SETS", "special ordered sets"},
                                            {"QUADOBJ", "quadratic objectives"},
                                            {"QMATRIX", "quadratic objectives"},
                                            {"QSECTION", "quadratic objectives"},
                                            {"QCMATRIX", "quadratic rows"},
                                            {"CSECTION", "cones"},
                                            {"INDICATORS", "indicator rows"},
                                            {"LAZYCONS", "lazy rows"},
                                            {"USERCUTS", "user cuts"},
                                            {"GENCONS", "general constraints"},
                                            {"PWLOBJ", "piecewise linear objectives"},
                                            {"PWLNAM", "piecewise linear objectives"},
                                            {"SCENARIOS", "scenarios"}}};

/// The first set of a section with several, and whether the lines belong to it.
class SetChoice {
 public:
  /// True if a line with this set name counts; an empty name goes on with the set before.
  bool counts(std::string_view name, std::string_view section, std::size_t line, Model& model) {
    if (!chosen_) chosen_ = std::string(name);
    if (name.empty() || name == current_) return isFirst_;
    current_ = std::string(name);
    isFirst_ = *chosen_ == name;
    if (!isFirst_)
      model.remarks.push_back({line, "the set " + inQuotes(name) + " of " + std::string(section) +
                                         " is ignored, the first one is used"});
    return isFirst_;
  }

 private:
  std::optional<std::string> chosen_;
  std::string current_;
  bool isFirst_ = true;
};

class MpsReader {
 public:
  MpsReader(std::string_view text, MpsForm form, const ReadOptions& options)
      : text_(text), form_(form), rows_(model_, numbers_), columns_(model_, numbers_, options) {}

  Model read();

 private:
  void reserve();
  /// False for ENDATA.
  bool openSection(std::string_view text);
  void enter(MpsSection section, std::string_view word);
  void readCard(std::string_view text);
  void setSense(std::string_view word);
  void addRow();
  void addEntries();
  void changeMarker();
  void enterColumn();
  void addVector(bool isRange);
  void addBound();
  std::uint32_t rowOf(std::string_view name) const;

  std::string_view text_;
  MpsForm form_;
  Model model_;
  NumberReader numbers_;
  MpsRows rows_;
  MpsColumns columns_;
  MpsCard card_;
  std::size_t line_ = 0;
  MpsSection section_ = MpsSection::none;
  std::vector<MpsSection> entered_;
  bool hasSense_ = false;
  bool isBetweenMarkers_ = false;
  /// The last column that had an entry in a row, + 1.
  std::vector<std::uint32_t> lastColumns_;
  SetChoice rightSideSets_;
  SetChoice rangeSets_;
  SetChoice boundSets_;
};

void MpsReader::setSense(std::string_view word) {
  if (std::exchange(hasSense_, true))
    throw ModelError(line_, "the sense of the objective comes a second time");
  for (const std::string_view maximise : {"MAX", "MAXIMIZE", "MAXIMISE"}) {
    if (equalsInAnyCase(word, maximise)) {
      model_.objective.sense = ObjectiveSense::maximise;
      return;
    }
  }
  for (const std::string_view minimise : {"MIN", "MINIMIZE", "MINIMISE"})
    if (equalsInAnyCase(word, minimise)) return;
  throw ModelError(line_, inQuotes(word) + " is no sense of an objective, which is MIN or MAX");
}

void MpsReader::enter(MpsSection section, std::string_view word) {
  if (std::find(entered_.begin(), entered_.end(), section) != entered_.end())
    throw ModelError(line_, "the section " + std::string(word) + " comes a second time");
  entered_.push_back(section);
  section_ = section;
  if (section == MpsSection::columns) {
    lastColumns_.resize(model_.rowCount());
    reserve();
  }
}

void MpsReader::reserve() {
  // At most two entries a line; pages that stay unused cost nothing.
  const auto lines = static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n'));
  const std::size_t most = std::min(2 * lines, text_.size() / 4);
  model_.entryRows.reserve(most);
  model_.entryValues.reserve(most);
}

bool MpsReader::openSection(std::string_view text) {
  std::string_view rest = text;
  const std::string_view word = takeWord(rest);
  rest = trimmed(rest);
  if (equalsInAnyCase(word, "ENDATA")) return false;
  if (equalsInAnyCase(word, "NAME")) {
    model_.name = std::string(rest);
    section_ = MpsSection::none;
    return true;
  }
  for (const SectionWord& known : sectionWords) {
    if (!equalsInAnyCase(word, known.word)) continue;
    enter(known.section, known.word);
    if (known.section == MpsSection::objectiveSense && !rest.empty()) setSense(rest);
    if (known.section == MpsSection::objectiveName && !rest.empty())
      rows_.setObjective(rest, line_);
    return true;
  }
  for (const Refusal& refused : refusals)
    if (equalsInAnyCase(word, refused.word))
      throw ModelError(line_, std::string(refused.what) + " (" + std::string(refused.word) +
                                  ") are not supported");
  if (section_ == MpsSection::objectiveSense) {
    setSense(trimmed(text));
    return true;
  }
  throw ModelError(line_, inQuotes(word) + " is no section of an MPS file");
}

std::uint32_t MpsReader::rowOf(std::string_view name) const {
  if (const auto row = model_.rowNames.find(name)) return *row;
  throw ModelError(line_, "there is no row " + inQuotes(name));
}

void MpsReader::enterColumn() {
  const std::size_t count = model_.columnCount();
  // As in the sections of sets, a line without a name goes on with the column before.
  if (card_.first.empty() && count == 0)
    throw ModelError(line_, "the name of the column is missing");
  if (card_.first.empty()) card_.first = model_.columnNames[count - 1];
  if (count > 0 && model_.columnNames[count - 1] == card_.first) return;
  if (!model_.columnNames.add(card_.first).isNew)
    throw ModelError(line_, "the column " + inQuotes(card_.first) + " comes a second time");
  model_.columnStart.back() = model_.entryRows.size();
  model_.columnStart.push_back(model_.entryRows.size());
  columns_.append(isBetweenMarkers_);
}

void MpsReader::changeMarker() {
  if (card_.marker == "'INTORG'")
    isBetweenMarkers_ = true;
  else if (card_.marker == "'INTEND'")
    isBetweenMarkers_ = false;
  else if (card_.marker == "'SOSORG'" || card_.marker == "'SOSEND'")
    throw ModelError(line_,
                     "special ordered sets (" + std::string(card_.marker) + ") are not supported");
  else
    throw ModelError(line_, inQuotes(card_.marker) + " is no marker");
}

void MpsReader::addEntries() {
  if (!card_.marker.empty()) return changeMarker();
  enterColumn();
  const auto column = static_cast<std::uint32_t>(model_.columnCount());
  for (const auto& [name, value] : card_.pairs) {
    const std::uint32_t row = rowOf(name);
    if (std::exchange(lastColumns_[row], column) == column)
      throw ModelError(line_, "the column " + inQuotes(card_.first) +
                                  " has two entries in the row " + inQuotes(name));
    const QQ entry = numbers_.read(value, line_);
    if (entry.isZero()) continue;
    model_.entryRows.push_back(row);
    model_.entryValues.append(entry);
  }
  model_.columnStart.back() = model_.entryRows.size();
}

void MpsReader::addVector(bool isRange) {
  SetChoice& sets = isRange ? rangeSets_ : rightSideSets_;
  if (!sets.counts(card_.first, isRange ? "RANGES" : "RHS", line_, model_)) return;
  for (const auto& [name, value] : card_.pairs) {
    const std::uint32_t row = rowOf(name);
    if (isRange)
      rows_.setRange(row, value, line_);
    else
      rows_.setRightSide(row, value, line_);
  }
}

void MpsReader::addBound() {
  if (!boundSets_.counts(card_.first, "BOUNDS", line_, model_)) return;
  const auto& [name, value] = card_.pairs.front();
  const auto column = model_.columnNames.find(name);
  if (!column) throw ModelError(line_, "there is no column " + inQuotes(name));
  columns_.setBound(card_.code, *column, value, line_);
}

void MpsReader::readCard(std::string_view text) {
  if (section_ == MpsSection::objectiveSense) return setSense(trimmed(text));
  if (section_ == MpsSection::objectiveName) return rows_.setObjective(trimmed(text), line_);
  const bool isBound = section_ == MpsSection::bounds;
  const NameTest isName = [this, isBound](std::string_view word) {
    return (isBound ? model_.columnNames : model_.rowNames).find(word).has_value();
  };
  if (!readMpsCard(text, form_, section_, isName, line_, card_)) return;
  switch (section_) {
    case MpsSection::rows:
      return rows_.append(card_.code, card_.first, line_);
    case MpsSection::columns:
      return addEntries();
    case MpsSection::rightSides:
    case MpsSection::ranges:
      return addVector(section_ == MpsSection::ranges);
    case MpsSection::bounds:
      return addBound();
    default:
      throw ModelError(line_, "a line of data stands outside of the sections");
  }
}

Model MpsReader::read() {
  std::string_view rest = text_;
  takeByteOrderMark(rest, model_);
  bool isComplete = false;
  while (!isComplete && !rest.empty()) {
    ++line_;
    const std::string_view text = takeLine(rest);
    if (text.starts_with('*') || trimmed(text).empty()) continue;
    if (text.front() == ' ' || text.front() == '\t')
      readCard(text);
    else
      isComplete = !openSection(text);
  }
  if (!isComplete) throw ModelError(line_, "the file ends without ENDATA");
  columns_.finish();
  rows_.finish();
  return std::move(model_);
}

}  // namespace

Model readMps(std::string_view text, const ReadOptions& options) {
  try {
    return MpsReader(text, MpsForm::free, options).read();
  } catch (const ModelError& error) {
    try {
      return MpsReader(text, MpsForm::fixed, options).read();
    } catch (const ModelError&) {
      // The free form is by far the more usual one, so its report helps more.
    }
    throw error;
  }
}

}  // namespace starsift
