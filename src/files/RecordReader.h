// Reading the fields of one record of a .sol file; see SolReader.h.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "numbers/QQ.h"
#include "stars/Star.h"
#include "text/TextCursor.h"

namespace starsift {

/// Fields 6 and 7 of a record, in the text that was read.
struct RecordTexts {
  std::string_view params;
  std::string_view version;
};

/// Fields 6 and 7: the rest of the line, split at its bars; the source moves past its line feed.
RecordTexts readRecordTexts(TextCursor& source);

/// Returns the rest of the line; the source moves past its line feed.
std::string_view takeLine(TextCursor& source);

/// Reads records, their numbers as tokens of Number, each of which T must hold. Keeps its scratch
/// storage between records.
template <class T, class Number>
class RecordReader {
 public:
  /// See readStar() of SolReader.h; PrecisionException if T can't hold a number.
  bool read(Star<T>& star, TextCursor& source);

 private:
  bool readFields(Star<T>& star, TextCursor& source);
  void readNumbers(Vector<T>& numbers, TextCursor& source);

  std::vector<Number> components_;
};

extern template class RecordReader<long double, long double>;
extern template class RecordReader<long double, QQ>;
extern template class RecordReader<QQ, QQ>;

}  // namespace starsift
