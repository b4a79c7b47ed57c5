#include "models/read/MpsCards.h"

#include <algorithm>
#include <array>
#include <optional>

#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

constexpr std::string_view markerWord = "'MARKER'";

/// First column, counted from 0, and length of the fields of the fixed form.
struct Field {
  std::size_t begin;
  std::size_t length;
};
constexpr std::array<Field, 6> fixedFields{{{1, 2}, {4, 8}, {14, 8}, {24, 12}, {39, 8}, {49, 12}}};
/// Behind the last field; from column 73 on cards had numbers of their own.
constexpr Field behindFields{61, 11};

using Words = std::vector<std::string_view>;

/// The word with which pairs, and thus comments, may begin.
std::size_t firstPairWord(MpsSection section) {
  return section == MpsSection::bounds || section == MpsSection::rows ? 2 : 1;
}

void splitWords(std::string_view text, MpsSection section, const NameTest& isName, Words& words) {
  words.clear();
  while (true) {
    const std::string_view word = takeWord(text);
    if (word.empty()) return;
    if (word.front() == '$' && words.size() >= firstPairWord(section) && !isName(word)) return;
    words.push_back(word);
  }
}

void takePairs(const Words& words, std::size_t first, MpsCard& card) {
  for (std::size_t i = first; i + 1 < words.size(); i += 2)
    card.pairs.emplace_back(words[i], words[i + 1]);
}

void takeFreeColumn(const Words& words, std::size_t line, MpsCard& card) {
  if (words.size() == 3 && words[1] == markerWord) {
    card.marker = words[2];
    return;
  }
  if (words.size() < 2)
    throw ModelError(line, "a line of COLUMNS has a column and pairs of a row and a value");
  const std::size_t first = words.size() % 2;
  if (first == 1) card.first = words[0];
  takePairs(words, first, card);
}

void takeFreeVector(const Words& words, std::size_t line, MpsCard& card) {
  if (words.size() < 2) throw ModelError(line, "pairs of a row and a value are missing");
  const std::size_t first = words.size() % 2;
  if (first == 1) card.first = words[0];
  takePairs(words, first, card);
}

bool isNumber(std::string_view word) {
  const std::optional<NumberForm> form = scanNumber(word);
  return form && form->length == word.size();
}

bool hasValue(std::string_view code) {
  constexpr std::array<std::string_view, 4> bare = {"FR", "MI", "PL", "BV"};
  return std::ranges::none_of(
      bare, [code](std::string_view kind) { return equalsInAnyCase(code, kind); });
}

void takeFreeBound(const Words& words, const NameTest& isName, std::size_t line, MpsCard& card) {
  card.code = words[0];
  const std::size_t count = words.size();
  // The set may be missing, and so may the value of a bound that needs none.
  bool hasSet = count == 4;
  if (!hasValue(card.code) && count == 3) hasSet = isName(words[2]) || !isNumber(words[2]);
  const std::size_t column = hasSet ? 2 : 1;
  const std::size_t fewest = column + (hasValue(card.code) ? 2 : 1);
  if (count < fewest || count > column + 2)
    throw ModelError(line, "a line of BOUNDS has a kind, a set, a column and a value");
  if (hasSet) card.first = words[1];
  card.pairs.emplace_back(words[column], column + 1 < count ? words[column + 1] : "");
}

bool readFreeCard(std::string_view text, MpsSection section, const NameTest& isName,
                  std::size_t line, MpsCard& card) {
  static thread_local Words words;
  splitWords(text, section, isName, words);
  if (words.empty()) return false;
  switch (section) {
    case MpsSection::rows:
      if (words.size() != 2) throw ModelError(line, "a line of ROWS has a kind and a name");
      card.code = words[0];
      card.first = words[1];
      break;
    case MpsSection::columns:
      takeFreeColumn(words, line, card);
      break;
    case MpsSection::bounds:
      takeFreeBound(words, isName, line, card);
      break;
    default:
      takeFreeVector(words, line, card);
  }
  return true;
}

std::string_view fieldOf(std::string_view text, const Field& field) {
  if (field.begin >= text.size()) return {};
  return trimmed(text.substr(field.begin, field.length));
}

/// Nothing may stand between the fields: it would be lost.
void requireGaps(std::string_view text, std::size_t line) {
  if (text.find('\t') != std::string_view::npos)
    throw ModelError(line, "a tab stands in fixed columns");
  std::size_t begin = 0;
  for (const Field& field : fixedFields) {
    if (!fieldOf(text, {begin, field.begin - begin}).empty())
      throw ModelError(line, "text stands between the fixed columns");
    begin = field.begin + field.length;
  }
  if (!fieldOf(text, behindFields).empty())
    throw ModelError(line, "text stands behind the fixed columns");
}

/// Markers stand in columns of their own, which differ between programs.
std::string_view fixedMarker(std::string_view text) {
  takeWord(text);
  return takeWord(text) == markerWord ? trimmed(text) : std::string_view();
}

bool readFixedCard(std::string_view text, MpsSection section, std::size_t line, MpsCard& card) {
  if (section == MpsSection::columns) card.marker = fixedMarker(text);
  if (!card.marker.empty()) return true;
  for (const std::size_t field : {std::size_t{2}, std::size_t{4}})
    if (fieldOf(text, fixedFields[field]).starts_with('$'))
      text = text.substr(0, fixedFields[field].begin);
  requireGaps(text, line);
  card.code = fieldOf(text, fixedFields[0]);
  card.first = fieldOf(text, fixedFields[1]);
  for (const std::size_t field : {std::size_t{2}, std::size_t{4}}) {
    const std::string_view name = fieldOf(text, fixedFields[field]);
    const std::string_view value = fieldOf(text, fixedFields[field + 1]);
    if (!name.empty() || !value.empty()) card.pairs.emplace_back(name, value);
  }
  const bool hasPairs = section != MpsSection::rows;
  if (card.pairs.empty() == hasPairs || (section == MpsSection::rows && card.first.empty()) ||
      (section == MpsSection::bounds && card.pairs.size() != 1))
    throw ModelError(line, "the fixed columns of the line have too few or too many names");
  return true;
}

}  // namespace

bool readMpsCard(std::string_view text, MpsForm form, MpsSection section, const NameTest& isName,
                 std::size_t line, MpsCard& card) {
  card.code = card.first = card.marker = {};
  card.pairs.clear();
  return form == MpsForm::free ? readFreeCard(text, section, isName, line, card)
                               : readFixedCard(text, section, line, card);
}

}  // namespace starsift
