#include "text/Serializable.h"

#include <forward_list>
#include <mutex>
#include <utility>

namespace starsift {

const ListStyle& listStyle(std::string separators, bool mergeSeparators, bool secondFlag) {
  if (separators.find(' ') == std::string::npos) separators += ' ';
  // Never destroyed: objects with static storage may use a style until the end.
  static auto& styles = *new std::forward_list<ListStyle>;
  static std::mutex guard;
  const std::lock_guard lock(guard);
  for (const ListStyle& style : styles)
    if (style.separators == separators && style.mergeSeparators == mergeSeparators &&
        style.secondFlag == secondFlag)
      return style;
  // A reference to the element in the list, not to a temporary.
  // cppcheck-suppress returnTempReference
  return styles.emplace_front(ListStyle{std::move(separators), mergeSeparators, secondFlag});
}

}  // namespace starsift
