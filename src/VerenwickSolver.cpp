#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <optional>
#include <string>

#include "ComponentTables/ModelBundle.h"
#include "ComputationsSrc/Lapack.h"
#include "ForcedVibration/ForcedVibration.h"
#include "FreeVibration/FreeVibration.h"
#include "InputAndChecking/CouplingPowerPrepare.h"
#include "InputAndChecking/DataChecking.h"
#include "InputAndChecking/ImportInputFile.h"
#include "InputAndChecking/SystemInformation.h"
#include "RunControl/CalculationMode.h"
#include "RunControl/Global_Parameter.h"
#include "RunControl/Log.h"
#include "RunControl/RunStopped.h"
#include "RunControl/StringOperation.h"
#include "verenwick.h"

namespace verenwick {
namespace {

/// Room that a path must leave for a file name, or it would be cut in the middle of it.
constexpr std::size_t kLongestName = [] {
  std::size_t longest = 0;
  for (const results::ResultFile& file : results::kResultFiles) {
    longest = std::max(longest, file.name.size());
  }
  return longest;
}();

static_assert(kPathLength == VERENWICK_TEXT_LENGTH);

/// A text from the host: the lowest byte of each element is a character. None if the text is
/// missing, longer than a path may be, or has a null character, at which the platform would cut it.
std::optional<std::string> unpack(const std::int32_t* characters, const std::int32_t* length) {
  if (length == nullptr || (characters == nullptr && *length > 0)) {
    return std::nullopt;
  }
  std::string text;
  if (*length > static_cast<std::int32_t>(kPathLength)) {
    return std::nullopt;
  }
  for (std::int32_t i = 0; i < *length; ++i) {
    text.push_back(static_cast<char>(static_cast<std::uint32_t>(characters[i]) & 0xFFU));
  }
  if (text.find('\0') != std::string::npos) {
    return std::nullopt;
  }
  return text;
}

/// Puts the words of a stopped run to standard error and into the log.
void reportStop(const char* words) noexcept {
  std::fprintf(stderr, "%s\n", words);
  try {
    appendToLog(words);
  } catch (...) {
    // Out of memory even for a line of the log: standard error has the words.
    return;
  }
}

/// The steps of a run behind a checked model.
void calculate(ModelBundle& model, std::int32_t mode) {
  if (mode == forcedOnly || mode == both) {
    COUPLINGPOWERPREPARE(model);
  }
  OUTPUTSYSTEMINFO(model);
  OUTPUTDIESELFIRINGSTATUS(model.diesel);
  if (mode == reportsOnly) {
    return;
  }
  lapack::claimMemory();
  if (mode != forcedOnly) {
    FREEVIBRATIONCALCULATION(model);
  }
  if (mode != freeOnly) {
    FORCEDVIBRATIONCALCULATION(model);
  }
}

void run(const std::optional<std::string>& inputFileDir,
         const std::optional<std::string>& inputFileName,
         const std::optional<std::string>& resultFileDir, std::int32_t mode,
         std::int32_t& inputStatus) {
  std::string resultDirectory = resultFileDir.value_or(std::string());
  SETRESULTFILEDIR(resultDirectory, static_cast<std::int32_t>(resultDirectory.size()));
  if (!resultFileDir || GET_RESULTFILEDIR().size() + kLongestName > kPathLength) {
    std::fprintf(stderr, "** Result directory is missing, too long or holds a null character\n");
    return;
  }
  if (!inputFileDir || !inputFileName) {
    Log(Opening::replace)
        .record("Error: Input file path is missing, longer than ", kPathLength,
                " characters or holds a null character");
    return;
  }
  std::string inputDirectory = *inputFileDir;
  ModelBundle model;
  if (!READINPUTFILE(FILEFULLADDRESS(inputDirectory, *inputFileName), model)) {
    return;
  }
  if (!DATACHECKING(model, mode)) {
    return;
  }
  inputStatus = 1;
  calculate(model, mode);
}

}  // namespace

extern "C" VERENWICK_API void VERENWICKSOLVER(
    const std::int32_t* inputFileDir, const std::int32_t* inputFileDirLength,
    const std::int32_t* inputFileName, const std::int32_t* inputFileNameLength,
    const std::int32_t* resultFileDir, const std::int32_t* resultFileDirLength,
    std::int32_t* inputStatus, const std::int32_t* calculationMode) {
  std::int32_t status = 0;
  static_cast<void>(Log::takeLostRecord());
  try {
    run(unpack(inputFileDir, inputFileDirLength), unpack(inputFileName, inputFileNameLength),
        unpack(resultFileDir, resultFileDirLength),
        calculationMode != nullptr ? *calculationMode : reportsOnly, status);
  } catch (const std::bad_alloc&) {
    reportStop("** Not enough memory for this run");
  } catch (const std::exception& stop) {
    reportStop(stop.what());
  } catch (...) {
    reportStop("** Run stopped by an unknown failure");
  }
  if (Log::takeLostRecord()) {
    reportStop("** The log can't be written: a line of it went to standard error");
  }
  if (inputStatus != nullptr) {
    *inputStatus = status;
  }
}

}  // namespace verenwick
