#include "models/text/ModelText.h"

#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <new>
#include <optional>

#include "models/text/ModelError.h"
#include "system/Exceptions.h"
#include "system/SystemCall.h"

namespace starsift {

namespace {

constexpr std::string_view gzipMark = "\x1f\x8b";
/// No deflated text is longer by a larger factor.
constexpr std::size_t mostDeflation = 1032;
constexpr std::size_t blockSize = std::size_t{1} << 20U;
/// Window bits for inflateInit2(): the largest window, gzip wrapping only.
constexpr int gzipWindow = 15 + 16;

/// The state of zlib, ended with the scope.
struct Inflation {
  Inflation() {
    if (inflateInit2(&stream, gzipWindow) != Z_OK) throw std::bad_alloc();
  }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;
  ~Inflation() { inflateEnd(&stream); }
  z_stream stream{};
};

/// The length that the last member claims, as far as its packed size makes it possible.
std::size_t claimedSize(std::string_view packed) {
  if (packed.size() < 4) return 0;
  std::size_t size = 0;
  for (std::size_t i = 0; i < 4; ++i)
    size = (size << 8U) | static_cast<unsigned char>(packed[packed.size() - 1 - i]);
  return std::min(size, mostDeflation * packed.size());
}

std::string readStandardInput() {
  std::string bytes;
  while (true) {
    const std::size_t size = bytes.size();
    bytes.resize(size + std::max(blockSize, size / 2));
    const ssize_t count =
        uninterrupted([&] { return read(STDIN_FILENO, bytes.data() + size, bytes.size() - size); });
    if (count < 0) throw ModelError(0, "standard input could not be read");
    bytes.resize(size + static_cast<std::size_t>(count));
    if (count == 0) return bytes;
  }
}

InputText readFile(const std::string& path) {
  try {
    if (std::optional<InputText> text = readFileText(path)) return *std::move(text);
  } catch (const ReadException&) {
    throw ModelError(0, "the file could not be read");
  }
  throw ModelError(0, "there is no such file");
}

/// Unpacks one member from the front of `packed`, appending to `text`.
void inflateMember(std::string_view& packed, std::string& text) {
  Inflation inflation;
  z_stream& stream = inflation.stream;
  int status = Z_OK;
  while (status == Z_OK) {
    const std::size_t size = text.size();
    if (size == text.capacity()) text.reserve(size + std::max(blockSize, size / 2));
    text.resize(std::min(text.capacity(), size + (std::size_t{1} << 30U)));
    const std::size_t given = std::min(packed.size(), std::size_t{1} << 30U);
    // zlib reads only, but its interface is older than const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));  // NOLINT
    stream.avail_in = static_cast<uInt>(given);
    stream.next_out = reinterpret_cast<Bytef*>(text.data() + size);  // NOLINT
    stream.avail_out = static_cast<uInt>(text.size() - size);
    status = inflate(&stream, Z_NO_FLUSH);
    packed.remove_prefix(given - stream.avail_in);
    text.resize(text.size() - stream.avail_out);
    if (status == Z_BUF_ERROR || (status == Z_OK && packed.empty() && stream.avail_out > 0))
      throw ModelError(0, "the gzip file is cut");
  }
  if (status != Z_STREAM_END) throw ModelError(0, "the gzip file is broken");
}

}  // namespace

std::string gunzip(std::string_view packed) {
  std::string text;
  text.reserve(claimedSize(packed) + 1);
  while (packed.starts_with(gzipMark)) inflateMember(packed, text);
  // gzip itself ignores zeros behind the last member, which tapes leave.
  if (packed.find_first_not_of('\0') != std::string_view::npos)
    throw ModelError(0, "other bytes follow the gzip file");
  return text;
}

ModelText readModelText(const std::string& path) {
  ModelText text{path, std::nullopt, {}};
  if (path == "-")
    text.bytes = readStandardInput();
  else
    text.file.emplace(readFile(path));
  if (text.view().starts_with(gzipMark)) {
    text.bytes = gunzip(text.view());
    text.file.reset();
  }
  return text;
}

}  // namespace starsift
