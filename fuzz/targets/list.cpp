// The general list form, in every delimiter setting and over several element types.
#include <sstream>

#include "Target.h"
#include "core/Pair.h"
#include "core/SerializableArray.h"
#include "numbers/QQ.h"

namespace starsift::fuzz {

namespace {

/// Texts of items: what was taken apart and put together again stays the same
/// unless the separator that is written stands in an item.
void readTexts(std::string_view bytes, const std::string& separators, bool merge) {
  SerializableArray<std::string> items(separators, merge, false);
  std::istringstream stream{std::string(bytes)};
  stream >> items;
  std::ostringstream text;
  text << items;
}

template <class T>
void readItems(std::string_view bytes, const std::string& separators, bool merge) {
  SerializableArray<T> items(separators, merge, false);
  std::istringstream stream{std::string(bytes)};
  stream >> items;
  std::ostringstream text;
  text << items;
  require(items.dimension() == 0 || text.str().size() > 2, "items have a text");
}

void readPair(std::string_view bytes) {
  SerializablePair<long, QQ> pair;
  std::istringstream stream{std::string(bytes)};
  stream >> pair;
}

/// Both sources have the same items.
void readFromBoth(std::string_view bytes, const std::string& separators, bool merge) {
  const auto items = [&](auto& source) {
    return outcomeOf([&] {
      std::string text;
      for (const std::string& item : listform::readItems(source, separators, merge))
        text += item + '\n';
      return text;
    });
  };
  TextCursor memory(bytes);
  std::istringstream stream{std::string(bytes)};
  StreamCursor cursor(stream);
  require(items(memory) == items(cursor), "a stream gives the same items");
}

}  // namespace

void runTarget(std::string_view bytes) {
  static const char* const separators[] = {",", ", ", "\n", ";, ", "|", "/ "};
  const std::string separator = separators[takeChoice(bytes, 6)];
  const bool merge = takeChoice(bytes, 2) != 0;
  const unsigned kind = takeChoice(bytes, 4);
  readFromBoth(bytes, separator, merge);
  if (kind == 0) readTexts(bytes, separator, merge);
  if (kind == 1) readItems<long>(bytes, separator, merge);
  if (kind == 2) readItems<QQ>(bytes, separator, merge);
  if (kind == 3) readPair(bytes);
}

}  // namespace starsift::fuzz
