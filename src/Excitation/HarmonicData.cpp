#include "Excitation/HarmonicData.h"

#include <cmath>
#include <span>

#include "RunControl/DataFile.h"
#include "RunControl/Log.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

constexpr std::int32_t kMaxFileOrders = 24;
constexpr std::int32_t kMaxFileColumns = 100;
constexpr std::size_t kOrderLabel = 7;  ///< characters before the number of orders
constexpr double kMegapascal = 1000000.0;

/// Takes the next line and the count behind its label; blanks don't count as characters.
bool readCount(DataFile& file, std::size_t label, std::int32_t least, std::int32_t& count) {
  if (!file.nextLine()) {
    return false;
  }
  std::string line = file.line();
  STRINGADJUST(line);
  return FreeFormat(line.substr(std::min(label, line.size()))).read(count) && count >= least;
}

bool skipToKeyword(DataFile& file, std::string_view keyword) {
  do {
    if (!file.nextLine()) {
      return false;
    }
  } while (file.line().find(keyword) == std::string::npos);
  return true;
}

/// Reads the block behind the next line with a keyword. Where the block repeats the column values,
/// they replace those of the block before.
bool readBlock(DataFile& file, std::string_view keyword, bool hasColumnValues, HarmonicData& data,
               std::vector<double>& matrix) {
  if (!skipToKeyword(file, keyword) || !file.skipLines(1) ||
      !(hasColumnValues ? file.numbers(data.columnValues) : file.skipLines(1)) ||
      !file.skipLines(2)) {
    return false;
  }
  const auto columns = static_cast<std::size_t>(data.columns);
  for (std::size_t h = 0; h < data.harmonicOrder.size(); ++h) {
    if (!file.numbers(data.harmonicOrder[h], std::span(matrix).subspan(h * columns, columns))) {
      return false;
    }
  }
  return true;
}

void scale(std::vector<double>& values, double unit) {
  for (double& value : values) {
    value *= unit;
  }
}

/// Reports a line that can't be read. The number follows the words directly.
bool failLine(const DataFile& file) {
  appendToLog("Error occurs when reading ", file.name(), " in line",
              std::to_string(file.lineNumber()));
  return false;
}

/// Element i, from 1; zero beyond the last one.
double elementOrZero(const std::vector<double>& values, std::size_t i) {
  return i <= values.size() ? values[i - 1] : 0.0;
}

}  // namespace

bool loadHarmonicFile(std::string_view path, const HarmonicFileKind& kind, HarmonicData& data) {
  DataFile file(path);
  if (!file.skipLines(1) || !readCount(file, kOrderLabel, 0, data.orders)) {
    return failLine(file);
  }
  if (data.orders > kMaxFileOrders) {
    appendToLog("Number of harmonic orders exceeds the max allowable number");
    return false;
  }
  if (!readCount(file, kind.columnLabel, 1, data.columns)) {
    return failLine(file);
  }
  if (data.columns > kMaxFileColumns) {
    appendToLog(kind.tooManyColumns);
    return false;
  }
  const auto orders = static_cast<std::size_t>(data.orders);
  const auto columns = static_cast<std::size_t>(data.columns);
  data.harmonicOrder.resize(orders);
  data.columnValues.resize(columns);
  for (auto* matrix : {&data.cosine, &data.sine, &data.resultant, &data.phaseAngle}) {
    matrix->resize(orders * columns);
  }
  if (!file.skipLines(1) || !readBlock(file, "COSINE", true, data, data.cosine) ||
      !readBlock(file, "SINE", false, data, data.sine) ||
      !readBlock(file, "RESULTANT", true, data, data.resultant) ||
      !readBlock(file, "PHASE", true, data, data.phaseAngle)) {
    return failLine(file);
  }
  scale(data.columnValues, kind.columnUnit);
  for (auto* matrix : {&data.cosine, &data.sine, &data.resultant}) {
    scale(*matrix, kMegapascal);
  }
  for (double& angle : data.phaseAngle) {
    angle = radians(angle);
  }
  if (data.orders == 0) {
    appendToLog("Warning: ", file.name(), " has no harmonic orders, its pressures excite nothing");
  }
  return true;
}

bool HarmonicFileLoader::load(const std::string& path, SharedHarmonicData& data) {
  SharedHarmonicData& known = loaded_[path];
  if (known == nullptr) {
    auto read = std::make_shared<HarmonicData>();
    if (!loadHarmonicFile(path, kind_, *read)) {
      return false;
    }
    known = std::move(read);
  }
  data = known;
  return true;
}

std::vector<std::complex<double>> interpolateHarmonics(const SharedHarmonicData& data, double x) {
  if (data == nullptr) {
    return {};
  }
  const auto columns = static_cast<std::size_t>(data->columns);
  std::size_t low = 1;
  std::size_t high = 2;
  while (high < columns && elementOrZero(data->columnValues, high) < x) {
    ++low;
    ++high;
  }
  // A file with one column has no second one: its value is zero, and the elements of that column
  // are those of the next row.
  const double xLow = elementOrZero(data->columnValues, low);
  const double xHigh = elementOrZero(data->columnValues, high);
  const auto at = [&](const std::vector<double>& matrix, std::size_t row) {
    const double valueLow = elementOrZero(matrix, row * columns + low);
    const double valueHigh = elementOrZero(matrix, row * columns + high);
    return valueLow + ((valueHigh - valueLow) * (x - xLow)) / (xHigh - xLow);
  };
  std::vector<std::complex<double>> coefficients;
  for (std::size_t row = 0; row < data->harmonicOrder.size(); ++row) {
    // The pressure is resultant x sin(order x angle + phase).
    const double resultant = at(data->resultant, row);
    const double phase = at(data->phaseAngle, row);
    const double cosine = resultant * std::sin(phase);
    const double sine = resultant * std::cos(phase);
    coefficients.emplace_back(roundedToSingle(0.5 * cosine), roundedToSingle(-(0.5 * sine)));
  }
  return coefficients;
}

}  // namespace verenwick
