#include "RunControl/DataFile.h"

#include "RunControl/Log.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

bool readAll(FreeFormat& from, std::span<double> values) {
  for (double& value : values) {
    if (!from.read(value)) {
      return false;
    }
  }
  return true;
}

}  // namespace

DataFile::DataFile(std::string_view path) : name_(trimmed(path)), reader_(name_) {}

bool DataFile::nextLine() {
  ++lineNumber_;
  if (!reader_.readLine(line_)) {
    return false;
  }
  STRINGDELETETAB(line_);
  return true;
}

bool DataFile::skipLines(int count) {
  for (int i = 0; i < count; ++i) {
    if (!nextLine()) {
      return false;
    }
  }
  return true;
}

bool DataFile::numbers(std::span<double> values) {
  if (!nextLine()) {
    return false;
  }
  FreeFormat format(line_);
  return readAll(format, values);
}

bool DataFile::numbers(double& first, std::span<double> values) {
  if (!nextLine()) {
    return false;
  }
  FreeFormat format(line_);
  return format.read(first) && readAll(format, values);
}

bool DataFile::reportFailure() const {
  appendToLog("Error occurs when reading ", name_, " in line ", lineNumber_);
  return false;
}

}  // namespace verenwick
