// Stars in few bytes each, for a search that finds millions of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "numbers/QQ.h"
#include "stars/Star.h"

namespace starsift {

/// How the components of a packed point are stored: in the first form that takes all of them, so
/// that equal points have equal bytes.
enum class PointForm : std::uint8_t {
  /// All are 0 or 1: a bit each, from the highest bit of a byte on.
  bits,
  /// Signed integers of 1, 2 or 4 bytes.
  bytes,
  shorts,
  words,
  /// The text of the vector over the rationals.
  text,
};

/// A number among packed ones.
struct PackedNumber {
  QQ value() const { return text.empty() ? QQ(static_cast<long>(integer)) : QQ::parse(text); }

  std::int64_t integer = 0;
  /// Of a number that isn't an integer of magnitude below 2^62; empty for one.
  std::string_view text;
};

/// A packed star, of which only the place of its fields was determined. Valid until its store
/// changes.
struct PackedStar {
  /// 1 <= i <= dimension, in a form other than text.
  std::int64_t component(Index i) const;
  Vector<QQ> targetValues() const;

  PackedNumber targetNorm;
  PackedNumber slackNorm;
  std::int64_t time = 0;
  /// Indices of texts, see PackedStars::text().
  std::uint32_t params = 0;
  std::uint32_t version = 0;
  bool fresh = false;
  /// The components are no text, all other numbers are integers below 10^15 in magnitude: both
  /// number types hold them, and order them in the same way.
  bool isPlain = false;
  /// Long double holds all numbers.
  bool fitsLongDouble = false;
  PointForm form = PointForm::bits;
  Index dimension = 0;
  /// The bytes of the components.
  std::string_view x;
  /// The bytes of the target values.
  std::string_view values;
};

/// A sequence of stars. One of n components that are 0 or 1 takes n/8 bytes and about twenty more,
/// a Star<QQ> of them 16 n and two hundred. Texts of parameters and versions are stored once.
class PackedStars {
 public:
  PackedStars() = default;
  PackedStars(const PackedStars&) = delete;
  PackedStars& operator=(const PackedStars&) = delete;
  PackedStars(PackedStars&&) = default;
  PackedStars& operator=(PackedStars&&) = default;
  ~PackedStars() = default;

  std::size_t size() const { return records_.size(); }
  bool isEmpty() const { return records_.empty(); }

  void append(const Star<QQ>& star);
  /// 0 <= i < size().
  PackedStar operator[](std::size_t i) const;
  Star<QQ> star(std::size_t i) const;
  /// Text of parameters or of a version.
  const std::string& text(std::uint32_t index) const { return texts_[index]; }
  std::uint32_t textCount() const { return static_cast<std::uint32_t>(texts_.size()); }

  /// Long double holds all numbers of all stars.
  bool fitLongDouble() const { return unfit_ == 0; }
  /// Bytes of storage.
  std::size_t storageSize() const;

  /// sortStars() of StarOrder.h, by the texts of T, which must hold all numbers.
  template <class T>
  void sort();
  /// removeDuplicates() of StarOrder.h.
  void removeDuplicates(bool compareParams);

 private:
  struct Block {
    std::unique_ptr<unsigned char[]> bytes;
    std::size_t size = 0;
  };

  std::uint32_t indexOf(const std::string& text);
  /// Copies a record.
  unsigned char* stored(const std::string& record);
  /// A star that was found before this run.
  void setStale(std::size_t i);
  /// sort() by way of stars that aren't packed.
  template <class T>
  void sortUnpacked();
  /// Keeps the stars that are marked, and drops the others.
  void keepOnly(const std::vector<bool>& isKept);
  /// Copies the stars that are left to storage of their own.
  void compact();

  /// Where the star of each index begins.
  std::vector<unsigned char*> records_;
  std::vector<Block> blocks_;
  /// Bytes of the last block that are in use.
  std::size_t used_ = 0;
  /// Stars in the blocks, with those that were dropped.
  std::size_t stored_ = 0;
  /// Stars that long double doesn't hold.
  std::size_t unfit_ = 0;
  std::deque<std::string> texts_;
  std::unordered_map<std::string_view, std::uint32_t> indices_;
};

}  // namespace starsift
