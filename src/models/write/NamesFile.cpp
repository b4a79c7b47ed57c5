#include "models/write/NamesFile.h"

#include <algorithm>
#include <array>
#include <optional>

#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

constexpr std::string_view firstLine = "starport\t1";
constexpr std::array<std::string_view, 3> kindWords{"continuous", "integer", "binary"};
constexpr std::array<std::string_view, 4> senseWords{"E", "L", "G", "R"};

template <std::size_t count>
std::size_t indexOf(const std::array<std::string_view, count>& words, std::string_view word,
                    std::size_t line) {
  for (std::size_t i = 0; i < count; ++i)
    if (words[i] == word) return i;
  throw ModelError(line, inQuotes(word) + " stands at a wrong place");
}

std::string_view takeField(std::string_view& text) {
  const std::string_view field = text.substr(0, text.find('\t'));
  text.remove_prefix(std::min(field.size() + 1, text.size()));
  return field;
}

class NamesReader {
 public:
  NamesFile read(std::string_view text);

 private:
  void readLine(std::string_view text);
  void readObjective(std::string_view text);

  NamesFile names_;
  std::size_t line_ = 0;
};

void NamesReader::readObjective(std::string_view text) {
  Objective& objective = names_.objective;
  const std::string_view sense = takeField(text);
  constexpr std::array<std::string_view, 3> words{"min", "max", "none"};
  const std::size_t word = indexOf(words, sense, line_);
  objective.exists = word != 2;
  objective.sense = word == 1 ? ObjectiveSense::maximise : ObjectiveSense::minimise;
  objective.constant = NumberReader().read(takeField(text), line_);
  objective.name = std::string(text);
}

void NamesReader::readLine(std::string_view text) {
  const std::string_view word = takeField(text);
  if (word == "source") {
    names_.source = std::string(takeField(text));
    names_.sourceDigest = std::string(text);
  } else if (word == "opt") {
    names_.optDigest = std::string(text);
  } else if (word == "model") {
    names_.modelName = std::string(text);
  } else if (word == "objective") {
    readObjective(text);
  } else if (word == "constant") {
    names_.hasConstantColumn = true;
  } else if (word == "variable") {
    names_.kinds.push_back(static_cast<ColumnKind>(indexOf(kindWords, takeField(text), line_)));
    if (!names_.columnNames.add(text).isNew)
      throw ModelError(line_, "the variable " + inQuotes(text) + " comes a second time");
  } else if (word == "row") {
    names_.senses.push_back(static_cast<RowSense>(indexOf(senseWords, takeField(text), line_)));
    if (!names_.rowNames.add(text).isNew)
      throw ModelError(line_, "the row " + inQuotes(text) + " comes a second time");
  } else {
    throw ModelError(line_, inQuotes(word) + " stands at a wrong place");
  }
}

NamesFile NamesReader::read(std::string_view text) {
  while (!text.empty()) {
    ++line_;
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line_ > 1)
      readLine(line);
    else if (line != firstLine)
      throw ModelError(1, "this is no file of names");
  }
  if (line_ == 0) throw ModelError(0, "this is no file of names");
  return std::move(names_);
}

/// A path may have tabs and line feeds.
std::string withoutControls(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n'; }, '?');
  return text;
}

}  // namespace

NamesFile namesOf(const Model& model) {
  NamesFile names;
  names.modelName = model.name;
  names.objective = model.objective;
  names.objective.columns.clear();
  names.objective.coefficients.clear();
  names.columnNames = model.columnNames;
  names.kinds = model.kinds;
  names.rowNames = model.rowNames;
  names.senses = model.senses;
  return names;
}

std::string namesText(const NamesFile& names) {
  std::string text(firstLine);
  text += "\nsource\t" + withoutControls(names.source) + '\t' + names.sourceDigest;
  text += "\nopt\t" + names.optDigest;
  text += "\nmodel\t" + names.modelName;
  const Objective& objective = names.objective;
  text += "\nobjective\t";
  text += !objective.exists ? "none" : objective.sense == ObjectiveSense::maximise ? "max" : "min";
  text += '\t' + numberText(objective.constant) + '\t' + objective.name + '\n';
  if (names.hasConstantColumn) text += "constant\t1\n";
  for (std::size_t j = 0; j < names.columnNames.size(); ++j) {
    text += "variable\t";
    text += kindWords[static_cast<std::size_t>(names.kinds[j])];
    text += '\t';
    text += names.columnNames[j];
    text += '\n';
  }
  for (std::size_t i = 0; i < names.rowNames.size(); ++i) {
    text += "row\t";
    text += senseWords[static_cast<std::size_t>(names.senses[i])];
    text += '\t';
    text += names.rowNames[i];
    text += '\n';
  }
  return text;
}

NamesFile readNames(std::string_view text) {
  return NamesReader().read(text);
}

}  // namespace starsift
