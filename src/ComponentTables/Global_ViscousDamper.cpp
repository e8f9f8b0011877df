#include "ComponentTables/Global_ViscousDamper.h"

#include <algorithm>
#include <span>

#include "ComputationsSrc/Interpolation.h"
#include "RunControl/DataFile.h"
#include "RunControl/Log.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

/// Value of a table over frequency; as many values as were loaded.
/// @param empty value of a table without rows
double valueAt(const std::vector<double>& frequencies, const std::vector<double>& values,
               double frequency, double empty) {
  const std::size_t rows = std::min(frequencies.size(), values.size());
  if (rows < 2) {
    return rows == 1 ? values[0] : empty;
  }
  return interpolate(std::span(frequencies).first(rows), values, frequency);
}

/// Frequency in Hz of a harmonic order of the damper's speed.
double frequencyOf(const VISCOUSDAMPER_RECORD& damper, double q) { return damper.SPEED * q / 60; }

/// Reads the heading and counts the rows, blank lines left out.
bool countRows(const std::string& path, VISCOUSDAMPER_RECORD& damper, std::size_t& rows) {
  DataFile file(path);
  if (!file.nextLine()) {
    return file.reportFailure();
  }
  damper.ISCUSTOMSTIFFNESS = STRINGSPLITCOUNT(file.line()) != 2;
  rows = 0;
  while (file.nextLine()) {
    rows += isBlank(file.line()) ? 0 : 1;
  }
  return true;
}

/// Rows of the tables of all dampers.
constexpr std::size_t kMostRows = 5'000'000;

/// @param allRows rows of the tables so far
bool loadTable(VISCOUSDAMPER_RECORD& damper, std::size_t& allRows) {
  std::size_t rows = 0;
  if (!countRows(damper.CUSTOMDAMPINGFILE, damper, rows)) {
    return false;
  }
  allRows += rows;
  if (allRows > kMostRows) {
    appendToLog("Error: The tables of the viscous dampers have more than", kMostRows, " rows");
    return false;
  }
  damper.FREQUENCIES.assign(rows, 0.0);
  damper.CUSTOMDAMPING.assign(rows, 0.0);
  damper.CUSTOMSTIFFNESS.assign(damper.ISCUSTOMSTIFFNESS ? rows : 0, 0.0);
  DataFile file(damper.CUSTOMDAMPINGFILE);
  if (!file.skipLines(1)) {
    return file.reportFailure();
  }
  for (std::size_t i = 0; i < rows; ++i) {
    if (!file.nextLine()) {
      return file.reportFailure();
    }
    FreeFormat line(file.line());
    if (!line.read(damper.FREQUENCIES[i]) || !line.read(damper.CUSTOMDAMPING[i]) ||
        (damper.ISCUSTOMSTIFFNESS && !line.read(damper.CUSTOMSTIFFNESS[i]))) {
      return file.reportFailure();
    }
  }
  return true;
}

}  // namespace

std::int32_t GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(const VISCOUSDAMPER_TABLE& table,
                                                   std::int32_t nodeA, std::int32_t nodeB) {
  return firstPosition(table, [&](std::int32_t i) {
    const std::int32_t ring = GET_VISCOUSDAMPER_RINGNODE(table, i);
    const std::int32_t casing = GET_VISCOUSDAMPER_CASINGNODE(table, i);
    return (ring == nodeA && casing == nodeB) || (ring == nodeB && casing == nodeA);
  });
}

bool GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(const VISCOUSDAMPER_TABLE& table) {
  return firstPosition(table, [&](std::int32_t i) {
           return GET_VISCOUSDAMPER_ISCUSTOMDAMPING(table, i);
         }) > 0;
}

bool LOADCUSTOMDAMPINGFILE(VISCOUSDAMPER_TABLE& table) {
  std::size_t allRows = 0;
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    if (!isBlank(GET_VISCOUSDAMPER_CUSTOMDAMPINGFILE(table, i)) &&
        !loadTable(table.at(i), allRows)) {
      return false;
    }
  }
  return true;
}

double CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(const VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                             double q) {
  const VISCOUSDAMPER_RECORD& damper = table.at(row);
  return valueAt(damper.FREQUENCIES, damper.CUSTOMDAMPING, frequencyOf(damper, q),
                 damper.ABSDAMPING);
}

double CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(const VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                               double q) {
  const VISCOUSDAMPER_RECORD& damper = table.at(row);
  return valueAt(damper.FREQUENCIES, damper.CUSTOMSTIFFNESS, frequencyOf(damper, q), 0.0);
}

void CALCULATE_VISCOUSDAMPER_LOADCASESETTING(VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                             double stiffness) {
  VISCOUSDAMPER_RECORD& damper = table.at(row);
  damper.STIFFNESS = stiffness;
  damper.DAMPING = damper.ABSDAMPING;
}

}  // namespace verenwick
