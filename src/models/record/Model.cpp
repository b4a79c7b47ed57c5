#include "models/record/Model.h"

#include <numeric>

namespace starsift {

RowView::RowView(const Model& model)
    : start(model.rowCount() + 1), columns(model.entryCount()), entries(model.entryCount()) {
  for (const std::uint32_t row : model.entryRows) ++start[row + 1];
  std::partial_sum(start.begin(), start.end(), start.begin());
  std::vector<std::size_t> next(start.begin(), start.end() - 1);
  for (std::size_t j = 0; j < model.columnCount(); ++j) {
    for (std::size_t k = model.columnStart[j]; k < model.columnStart[j + 1]; ++k) {
      const std::size_t place = next[model.entryRows[k]]++;
      columns[place] = static_cast<std::uint32_t>(j);
      entries[place] = k;
    }
  }
}

}  // namespace starsift
