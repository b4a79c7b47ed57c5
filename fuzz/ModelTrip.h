// What holds of every model that a reader accepts.
#pragma once

#include "Target.h"
#include "models/write/ModelWriter.h"
#include "support/fixtures/ModelDescription.h"

namespace starsift::fuzz {

using test::modelTextWithoutRemarks;
using test::readBytes;

/// Once the names fit, the model that was written as `format` is read as it was.
inline void checkTrip(const Model& model, ModelFormat format) {
  const Model once = readBytes(writeModel(model, format).text, format);
  require(once.columnCount() == model.columnCount() && once.rowCount() == model.rowCount() &&
              once.entryCount() == model.entryCount(),
          "a written model has the same size");
  const Model twice = readBytes(writeModel(once, format).text, format);
  require(modelTextWithoutRemarks(once) == modelTextWithoutRemarks(twice),
          "a written model is read as it was");
}

inline void readAndWrite(std::string_view bytes, ModelFormat format) {
  const Model model = readBytes(bytes, format);
  require(model.columnStart.size() == model.columnCount() + 1 &&
              model.columnStart.back() == model.entryRows.size(),
          "a model that is accepted is whole");
  checkTrip(model, ModelFormat::mps);
  checkTrip(model, ModelFormat::lp);
}

}  // namespace starsift::fuzz
