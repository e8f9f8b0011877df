#pragma once

#include <gtest/gtest.h>

#include <string>

#include "ForcedVibration/SourceResponse.h"
#include "InputAndChecking/CouplingPowerPrepare.h"
#include "InputAndChecking/DataChecking.h"
#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"

namespace verenwick::test {

/// A model as it is in front of the forced calculation: read, checked, with the power of its
/// couplings. It has a result directory of its own.
struct PreparedModel {
  /// @param dataDirectory where the data files of the text lie
  explicit PreparedModel(std::string text, const std::string& dataDirectory = {}) {
    const std::string here = "@DIR@";
    for (auto at = text.find(here); at != std::string::npos; at = text.find(here)) {
      text.replace(at, here.size(), dataDirectory);
    }
    directory.write("input.txt", text);
    std::string results = directory.path().string();
    SETRESULTFILEDIR(results, static_cast<std::int32_t>(results.size()));
    EXPECT_TRUE(READINPUTFILE(directory.file("input.txt"), model) && DATACHECKING(model, 2))
        << readText(directory.path() / "Verenwick.log");
    COUPLINGPOWERPREPARE(model);
  }

  TemporaryDirectory directory;
  ModelBundle model;
};

/// Empty arrays of one family of a model.
inline FamilyResults emptyResults(const ModelBundle& model, Family family) {
  const SourceFamily& source = kSourceFamilies[static_cast<std::size_t>(family)];
  FamilyResults results;
  results.points = {model.mass.number(), model.shaft.number()};
  results.sources = source.sources(model);
  results.orders = source.orders(model);
  results.clear();
  return results;
}

}  // namespace verenwick::test
