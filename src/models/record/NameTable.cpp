#include "models/record/NameTable.h"

#include <functional>
#include <limits>
#include <stdexcept>

namespace starsift {

namespace {

constexpr std::size_t firstSlots = 64;

}  // namespace

NameTable::Added NameTable::add(std::string_view name) {
  if (2 * size() >= slots_.size()) growSlots();
  const std::size_t slot = slotOf(name);
  if (slots_[slot] != 0) return {slots_[slot] - 1, false};
  if (size() == std::numeric_limits<std::uint32_t>::max() - 1)
    throw std::length_error("NameTable: too many names");
  text_ += name;
  ends_.push_back(text_.size());
  slots_[slot] = static_cast<std::uint32_t>(size());
  return {slots_[slot] - 1, true};
}

std::optional<std::uint32_t> NameTable::find(std::string_view name) const {
  if (slots_.empty()) return std::nullopt;
  const std::uint32_t entry = slots_[slotOf(name)];
  if (entry == 0) return std::nullopt;
  return entry - 1;
}

std::size_t NameTable::slotOf(std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = std::hash<std::string_view>()(name) & mask;
  while (slots_[slot] != 0 && (*this)[slots_[slot] - 1] != name) slot = (slot + 1) & mask;
  return slot;
}

void NameTable::growSlots() {
  slots_.assign(slots_.empty() ? firstSlots : 2 * slots_.size(), 0);
  for (std::size_t i = 0; i < size(); ++i)
    slots_[slotOf((*this)[i])] = static_cast<std::uint32_t>(i + 1);
}

}  // namespace starsift
