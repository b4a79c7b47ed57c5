#include "models/jobs/Export.h"

#include <utility>

#include "files/ResultFile.h"
#include "models/jobs/BaseFiles.h"
#include "models/jobs/Explain.h"
#include "models/text/ModelError.h"
#include "models/text/Words.h"
#include "models/write/ModelWriter.h"
#include "models/write/PlainModel.h"
#include "system/FileIdentity.h"
#include "system/Signals.h"

namespace starsift {

void requireReplaceable(const std::string& path, const ImportOptions& options) {
  if (!options.force && fileIdentity(path))
    throw ModelError(0, path + " is there already (--force replaces it)");
}

void writeTextFile(const std::string& path, const std::string& text) {
  const DeferredSignals deferred;
  ResultFile file(path);
  if (!file.isOpen()) throw ModelError(0, "Could not write file: " + path);
  file.write(text);
  if (file.commit() == Commit::changed)
    throw ModelError(0, "Somebody else writes to file: " + path);
}

JobReport exportModel(const std::string& input, const std::string& output,
                      const ImportOptions& options) {
  const std::optional<ModelFormat> format = formatOfPath(output);
  if (!format || *format == ModelFormat::opb || output.ends_with("z"))
    throw ModelError(0, output + ": models are written as .mps or .lp");
  requireReplaceable(output, options);
  JobReport report;
  report.modelPath = input;
  report.problem = loadProblem(input, options);
  const Model model = plainModel(report.problem);
  WrittenModel written = writeModel(model, *format);
  report.remarks = model.remarks;
  const std::vector<ModelRemark>& readRemarks = report.problem.model.remarks;
  report.remarks.insert(report.remarks.begin(), readRemarks.begin(), readRemarks.end());
  report.remarks.insert(report.remarks.end(), written.remarks.begin(), written.remarks.end());
  writeTextFile(output, written.text);
  report.written.push_back(
      {output, counted(model.columnCount(), "column") + ", " + counted(model.rowCount(), "row")});
  return report;
}

}  // namespace starsift
