#include "Support/DataCheckCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "InputAndChecking/DataChecking.h"
#include "RunControl/Global_Parameter.h"
#include "Support/EveryKindModel.h"
#include "Support/SolverRun.h"

namespace verenwick::test {

CheckOutcome check(Model& model, std::int32_t mode) {
  const TemporaryDirectory directory;
  std::string path = directory.path().string();
  SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  CheckOutcome outcome;
  outcome.isSound = DATACHECKING(model, mode);
  std::istringstream log(readText(directory.file("Verenwick.log")));
  for (std::string line; std::getline(log, line);) {
    outcome.log.push_back(line);
  }
  return outcome;
}

void expectLogs(const std::vector<CheckCase>& cases) {
  for (const CheckCase& c : cases) {
    Model model = everyKindModel();
    c.change(model);
    const CheckOutcome outcome = check(model);
    EXPECT_EQ(outcome.log, c.log);
    const bool hasError = std::any_of(c.log.begin(), c.log.end(), [](const std::string& line) {
      return line.starts_with(" Error");
    });
    EXPECT_EQ(outcome.isSound, !hasError) << testing::PrintToString(c.log);
  }
}

}  // namespace verenwick::test
