#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ComponentTables/ModelBundle.h"

/// Data checks of a changed model and what they write.
namespace verenwick::test {

using Model = ModelBundle;
using Lines = std::vector<std::string>;

struct CheckOutcome {
  bool isSound = false;
  Lines log;
};

/// Checks a model in the given run mode, the log in a directory of its own.
CheckOutcome check(Model& model, std::int32_t mode = 2);

/// What is done to the sound plant with every kind, and all that the log then holds.
struct CheckCase {
  std::function<void(Model&)> change;
  Lines log;
};

/// Expects each case to give its log, and to be refused if that holds an error.
void expectLogs(const std::vector<CheckCase>& cases);

}  // namespace verenwick::test
