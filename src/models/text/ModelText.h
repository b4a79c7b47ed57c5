// The complete text of a model or solution file, unpacked.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/InputText.h"

namespace starsift {

/// The text of a file and the name to use for it in reports.
struct ModelText {
  std::string_view view() const { return file ? file->view() : std::string_view(bytes); }

  /// As the user gave it; "-" is standard input.
  std::string path;
  /// The bytes of a file that wasn't packed; else the text is `bytes`.
  std::optional<InputText> file;
  std::string bytes;
};

/// Reads the file at `path`, or standard input for "-", and unpacks it if it begins as gzip does.
/// ModelError if it can't be read or its packing is broken or cut.
ModelText readModelText(const std::string& path);

/// The unpacked text of one or more gzip members. ModelError if they are broken or cut.
std::string gunzip(std::string_view packed);

}  // namespace starsift
