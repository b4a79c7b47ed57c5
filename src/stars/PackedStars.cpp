// The form of a packed star, one field after the other:
//
//   flags                         1 byte, see Flag; the form of the point in its low bits
//   target norm, slack norm       numbers
//   time, parameters, version     integers
//   number of components, bytes of them, components
//   number of target values, bytes of them, target values
//
// An integer is stored in groups of seven bits, the lowest first; if it may be negative, its sign
// is the lowest bit. A number is an integer with a zero bit below it, or the length of its text
// with a one bit below it, and that text.

#include "stars/PackedStars.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

#include "core/VectorText.h"
#include "numbers/Conversion.h"
#include "numbers/QQText.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Flags of a record above the form of its point.
constexpr unsigned formMask = 7;
constexpr unsigned freshFlag = 8;
constexpr unsigned plainFlag = 16;
constexpr unsigned fitFlag = 32;

/// Integers below this magnitude are the same in both number types, and so is their order.
constexpr std::int64_t plainBound = 1'000'000'000'000'000;

constexpr std::size_t firstBlock = std::size_t{1} << 12U;
constexpr std::size_t largestBlock = std::size_t{1} << 20U;
constexpr std::size_t bitsPerByte = 8;

std::uint64_t withSignBelow(std::int64_t value) {
  return static_cast<std::uint64_t>(value) << 1U ^ (0 - static_cast<std::uint64_t>(value < 0));
}

std::int64_t withoutSignBelow(std::uint64_t value) {
  return static_cast<std::int64_t>(value >> 1U ^ (0 - (value & 1U)));
}

void putInteger(std::string& out, std::uint64_t value) {
  for (; value >= 128; value >>= 7U) out += static_cast<char>(value | 128U);
  out += static_cast<char>(value);
}

void putNumber(std::string& out, const QQ& value) {
  std::int64_t integer = 0;
  if (value.toInt64(integer)) return putInteger(out, withSignBelow(integer) << 1U);
  std::string text;
  append(text, value);
  putInteger(out, text.size() << 1U | 1U);
  out += text;
}

/// Takes fields off a record.
class FieldReader {
 public:
  explicit FieldReader(const unsigned char* position) : position_(position) {}

  std::uint64_t integer() {
    std::uint64_t value = 0;
    unsigned shift = 0;
    for (; *position_ >= 128; shift += 7) value |= std::uint64_t{*position_++ & 127U} << shift;
    return value | std::uint64_t{*position_++} << shift;
  }

  std::string_view bytes(std::size_t size) {
    const auto* const begin = reinterpret_cast<const char*>(position_);
    position_ += size;
    return {begin, size};
  }

  PackedNumber number() {
    const std::uint64_t code = integer();
    if ((code & 1U) == 0) return {withoutSignBelow(code >> 1U), {}};
    return {0, bytes(code >> 1U)};
  }

  const unsigned char* position() const { return position_; }

 private:
  const unsigned char* position_;
};

std::string_view bytesOf(const unsigned char* begin, const unsigned char* end) {
  return {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
}

/// Integer holds the integers from `least` to `greatest`.
template <class Integer>
bool isWithin(std::int64_t least, std::int64_t greatest) {
  return least >= std::numeric_limits<Integer>::min() &&
         greatest <= std::numeric_limits<Integer>::max();
}

/// The first form that takes all components.
PointForm formOf(const Vector<QQ>& x) {
  std::int64_t least = 0;
  std::int64_t greatest = 1;
  for (const QQ& component : x) {
    std::int64_t integer = 0;
    if (!component.toInt64(integer)) return PointForm::text;
    least = std::min(least, integer);
    greatest = std::max(greatest, integer);
  }
  if (least == 0 && greatest == 1) return PointForm::bits;
  if (isWithin<std::int8_t>(least, greatest)) return PointForm::bytes;
  if (isWithin<std::int16_t>(least, greatest)) return PointForm::shorts;
  return isWithin<std::int32_t>(least, greatest) ? PointForm::words : PointForm::text;
}

std::int64_t integerOf(const QQ& value) {
  std::int64_t integer = 0;
  value.toInt64(integer);
  return integer;
}

template <class Integer>
void putIntegers(std::string& out, const Vector<QQ>& x) {
  for (const QQ& component : x) {
    const auto integer = static_cast<Integer>(integerOf(component));
    std::array<char, sizeof integer> bytes{};
    std::memcpy(bytes.data(), &integer, bytes.size());
    out.append(bytes.data(), bytes.size());
  }
}

void putBits(std::string& out, const Vector<QQ>& x) {
  unsigned byte = 0;
  std::size_t count = 0;
  for (const QQ& component : x) {
    byte = byte << 1U | static_cast<unsigned>(integerOf(component));
    if (++count % bitsPerByte == 0) out += static_cast<char>(std::exchange(byte, 0));
  }
  if (count % bitsPerByte != 0)
    out += static_cast<char>(byte << (bitsPerByte - count % bitsPerByte));
}

void putPoint(std::string& out, const Vector<QQ>& x, PointForm form) {
  switch (form) {
    case PointForm::bits:
      return putBits(out, x);
    case PointForm::bytes:
      return putIntegers<std::int8_t>(out, x);
    case PointForm::shorts:
      return putIntegers<std::int16_t>(out, x);
    case PointForm::words:
      return putIntegers<std::int32_t>(out, x);
    case PointForm::text:
      return appendText(out, x, fileDigits);
  }
}

bool isPlainNumber(const QQ& value) {
  std::int64_t integer = 0;
  return value.toInt64(integer) && integer > -plainBound && integer < plainBound;
}

/// The flags of a star that is not fresh.
unsigned flagsOf(const Star<QQ>& star, PointForm form) {
  const auto areAll = [&star](auto holds) {
    return holds(star.targetNorm) && holds(star.slackNorm) &&
           std::all_of(star.targetValues.begin(), star.targetValues.end(), holds);
  };
  const auto flags = static_cast<unsigned>(form);
  if (form != PointForm::text && areAll(isPlainNumber)) return flags | plainFlag | fitFlag;
  const bool fits = areAll(isExact) && std::all_of(star.begin(), star.end(), isExact);
  return fits ? flags | fitFlag : flags;
}

template <class Integer>
std::int64_t integerAt(std::string_view bytes, std::size_t i) {
  Integer integer = 0;
  std::memcpy(&integer, bytes.data() + i * sizeof integer, sizeof integer);
  return integer;
}

PackedStar parsed(const unsigned char* record) {
  PackedStar star;
  FieldReader fields(record + 1);
  star.form = static_cast<PointForm>(*record & formMask);
  star.fresh = (*record & freshFlag) != 0;
  star.isPlain = (*record & plainFlag) != 0;
  star.fitsLongDouble = (*record & fitFlag) != 0;
  star.targetNorm = fields.number();
  star.slackNorm = fields.number();
  star.time = withoutSignBelow(fields.integer());
  star.params = static_cast<std::uint32_t>(fields.integer());
  star.version = static_cast<std::uint32_t>(fields.integer());
  star.dimension = static_cast<Index>(fields.integer());
  star.x = fields.bytes(fields.integer());
  const unsigned char* const values = fields.position();
  fields.integer();
  fields.bytes(fields.integer());
  star.values = bytesOf(values, fields.position());
  return star;
}

/// The bytes of a record.
std::string_view recordText(const unsigned char* record) {
  const std::string_view values = parsed(record).values;
  return bytesOf(record, reinterpret_cast<const unsigned char*>(values.data() + values.size()));
}

}  // namespace

std::int64_t PackedStar::component(Index i) const {
  const auto position = static_cast<std::size_t>(i - 1);
  switch (form) {
    case PointForm::bits:
      return static_cast<unsigned char>(x[position / bitsPerByte]) >>
                 (bitsPerByte - 1 - position % bitsPerByte) &
             1;
    case PointForm::bytes:
      return integerAt<std::int8_t>(x, position);
    case PointForm::shorts:
      return integerAt<std::int16_t>(x, position);
    case PointForm::words:
      return integerAt<std::int32_t>(x, position);
    case PointForm::text:
      break;
  }
  fail("PackedStar: the components are a text");
}

Vector<QQ> PackedStar::targetValues() const {
  FieldReader fields(reinterpret_cast<const unsigned char*>(values.data()));
  Vector<QQ> result(static_cast<Index>(fields.integer()));
  fields.integer();
  for (QQ& value : result) value = fields.number().value();
  return result;
}

void PackedStars::append(const Star<QQ>& star) {
  const PointForm form = formOf(star.x());
  const unsigned flags = flagsOf(star, form);
  std::string point;
  putPoint(point, star.x(), form);
  std::string values;
  for (const QQ& value : star.targetValues) putNumber(values, value);
  std::string record(1, static_cast<char>(star.fresh ? flags | freshFlag : flags));
  putNumber(record, star.targetNorm);
  putNumber(record, star.slackNorm);
  putInteger(record, withSignBelow(star.time));
  putInteger(record, indexOf(star.paramsText));
  putInteger(record, indexOf(star.versionText));
  putInteger(record, static_cast<std::uint64_t>(star.dimension()));
  putInteger(record, point.size());
  record += point;
  putInteger(record, static_cast<std::uint64_t>(star.targetValues.dimension()));
  putInteger(record, values.size());
  record += values;
  records_.push_back(stored(record));
  if ((flags & fitFlag) == 0) ++unfit_;
}

PackedStar PackedStars::operator[](std::size_t i) const {
  return parsed(records_[i]);
}

Star<QQ> PackedStars::star(std::size_t i) const {
  const PackedStar packed = parsed(records_[i]);
  Star<QQ> star;
  if (packed.form == PointForm::text) {
    TextCursor source(packed.x);
    readVector(source, star);
  } else {
    star.resize(packed.dimension, false);
    for (Index k = 1; k <= packed.dimension; ++k)
      star[k] = QQ(static_cast<long>(packed.component(k)));
  }
  star.targetValues = packed.targetValues();
  star.targetNorm = packed.targetNorm.value();
  star.slackNorm = packed.slackNorm.value();
  star.time = packed.time;
  star.paramsText = text(packed.params);
  star.versionText = text(packed.version);
  star.fresh = packed.fresh;
  return star;
}

std::size_t PackedStars::storageSize() const {
  std::size_t size = records_.capacity() * sizeof records_[0];
  for (const Block& block : blocks_) size += block.size;
  for (const std::string& text : texts_) size += sizeof(std::string) + text.capacity();
  return size;
}

std::uint32_t PackedStars::indexOf(const std::string& text) {
  const auto known = indices_.find(text);
  if (known != indices_.end()) return known->second;
  const auto index = static_cast<std::uint32_t>(texts_.size());
  indices_.emplace(texts_.emplace_back(text), index);
  return index;
}

unsigned char* PackedStars::stored(const std::string& record) {
  if (blocks_.empty() || blocks_.back().size - used_ < record.size()) {
    const std::size_t size =
        blocks_.empty() ? firstBlock : std::min(2 * blocks_.back().size, largestBlock);
    const std::size_t enough = std::max(size, record.size());
    blocks_.push_back({std::make_unique_for_overwrite<unsigned char[]>(enough), enough});
    used_ = 0;
  }
  unsigned char* const place = blocks_.back().bytes.get() + used_;
  std::copy(record.begin(), record.end(), place);
  used_ += record.size();
  ++stored_;
  return place;
}

void PackedStars::setStale(std::size_t i) {
  *records_[i] &= static_cast<unsigned char>(~freshFlag);
}

void PackedStars::keepOnly(const std::vector<bool>& isKept) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < records_.size(); ++i) {
    if (isKept[i])
      records_[kept++] = records_[i];
    else if ((*records_[i] & fitFlag) == 0)
      --unfit_;
  }
  records_.resize(kept);
  if (kept < stored_ / 2) compact();
}

void PackedStars::compact() {
  const std::vector<Block> former = std::exchange(blocks_, {});
  used_ = 0;
  stored_ = 0;
  for (unsigned char*& record : records_) record = stored(std::string(recordText(record)));
}

}  // namespace starsift
