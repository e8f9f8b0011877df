#include "RunControl/Global_Parameter.h"

#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

// The system's own default, on every platform; a run sets its directory first.
std::string resultFileDir = "C:\\QRM test\\";
std::int32_t fileId = 10;
bool outputAngleBasedResults = false;

constexpr char kSeparator = '\\';

}  // namespace

void SETRESULTFILEDIR(std::string& DIRNAME, std::int32_t N) {
  const std::size_t length = N > 0 ? static_cast<std::size_t>(N) : 0;
  shiftLeft(DIRNAME);
  const std::string_view directory = withoutTrailingBlanks(DIRNAME);
  if (directory.empty() || directory.back() == kSeparator) {
    resultFileDir = directory;
  } else {
    // Blanks that the shift left at the end stay in the path before the separator.
    std::string whole = DIRNAME;
    whole.resize(length, ' ');
    resultFileDir = whole + kSeparator;
  }
}

const std::string& GET_RESULTFILEDIR() { return resultFileDir; }

std::string FILEFULLADDRESS(std::string& FILEDIR, const std::string& FILENAME) {
  shiftLeft(FILEDIR);
  std::string address{withoutTrailingBlanks(FILEDIR)};
  if (!address.empty() && address.back() != kSeparator) {
    address += kSeparator;
  }
  address += trimmed(FILENAME);
  if (address.size() > kPathLength) {
    address.resize(kPathLength);
  }
  return address;
}

std::string resultFileAddress(std::string_view name) {
  return FILEFULLADDRESS(resultFileDir, std::string(name));
}

std::int32_t GETFILEID() {
  if (fileId < 10) {
    fileId = 10;
  }
  const std::int32_t id = fileId;
  // The sum wraps after two hundred million files and starts at 10 again.
  fileId = static_cast<std::int32_t>(static_cast<std::uint32_t>(fileId) + 10U);
  return id;
}

bool GET_OUTPUTANGLEBASEDRESULTS() { return outputAngleBasedResults; }

void SET_OUTPUTANGLEBASEDRESULTS(bool value) { outputAngleBasedResults = value; }

}  // namespace verenwick
