#pragma once

#include <cstdint>

#include "results/ResultFileTable.h"

/// Where a value stands in its file. Records are 8 bytes, one little-endian double each; records,
/// load cases, sources, order indices, points, engines and modes all count from 1.
namespace verenwick::results {

inline constexpr std::int64_t kRecordBytes = 8;
/// Records of one element of a family file: amplitude, angle, real part, imaginary part.
inline constexpr std::int64_t kComponents = 4;
/// Angle steps of the files over one period, one degree of the base frequency each.
inline constexpr std::int64_t kAngleSteps = 360;

/// The numbers of orders that an engine can have: whole ones, 1 to 20, while all engines of the
/// model are two-stroke, else halves, 1/2 to 12. A reciprocating pump has the whole ones.
inline constexpr std::int32_t kWholeOrders = 20;
inline constexpr std::int32_t kHalfOrders = 24;

/// The distance of neighbouring orders of an engine that has so many.
constexpr double orderStep(std::int64_t orders) { return orders == kHalfOrders ? 0.5 : 1.0; }

/// The records of "SystemInfo.bin", each one count.
enum class SystemCount {
  inertias = 1,
  shafts,
  viscousDampers,
  rubberDampers,
  steelSpringDampers,
  linearCouplings,
  progressiveCouplings,
  diesels,
  electricMotors,
  gasTurbines,
  steamTurbines,
  propellers,
  generators,
  loadCases,
  dieselOrders,  ///< harmonic orders of every diesel, kWholeOrders or kHalfOrders
  geislingerCouplings,
  centrifugalPumps,
  reciprocatingPumps
};
inline constexpr std::int64_t kSystemCounts = 18;
static_assert(static_cast<int>(SystemCount::dieselOrders) == 15);
static_assert(static_cast<int>(SystemCount::reciprocatingPumps) == kSystemCounts);

/// The number of orders of a family where the family alone decides it; 0 where the model does
/// (diesels: SystemCount::dieselOrders; propellers: 2, or the orders of the ice excitation).
constexpr std::int64_t fixedOrders(Family family) {
  switch (family) {
    case Family::generator:
    case Family::centrifugalPump:
    case Family::electricMotor:
      return 4;
    case Family::reciprocatingPump:
      return kWholeOrders;
    case Family::diesel:
    case Family::propeller:
      break;
  }
  return 0;
}

/// Mode shapes. The rigid-body mode 1 has no records: `mode` runs from 2.
constexpr std::int64_t recordOfModePoint(std::int64_t mode, std::int64_t points,
                                         std::int64_t point) {
  return (mode - 2) * points + point;
}

/// Vector sums. `modes` counts the rigid-body mode, which has no records: `mode` runs from 2.
constexpr std::int64_t recordOfEngineModeOrder(std::int64_t engine, std::int64_t modes,
                                               std::int64_t mode, std::int64_t orders,
                                               std::int64_t order) {
  return ((engine - 1) * (modes - 1) + mode - 2) * orders + order;
}

/// Element of a family's result arrays of one load case: points fastest, then orders, then sources.
constexpr std::int64_t familyElement(std::int64_t orders, std::int64_t points, std::int64_t source,
                                     std::int64_t order, std::int64_t point) {
  return (source - 1) * orders * points + (order - 1) * points + point;
}

/// Family files. `component` is 1 amplitude, 2 angle, 3 real part, 4 imaginary part.
constexpr std::int64_t recordOfFamilyElement(std::int64_t loadCase, std::int64_t sources,
                                             std::int64_t orders, std::int64_t points,
                                             std::int64_t source, std::int64_t order,
                                             std::int64_t point, std::int64_t component) {
  const std::int64_t elements = sources * orders * points;
  const std::int64_t element = familyElement(orders, points, source, order, point);
  return ((loadCase - 1) * elements + element - 1) * kComponents + component;
}

/// One value a point and load case.
constexpr std::int64_t recordOfLoadCasePoint(std::int64_t loadCase, std::int64_t points,
                                             std::int64_t point) {
  return (loadCase - 1) * points + point;
}

/// Values over one period, `step` from 1 to kAngleSteps.
constexpr std::int64_t recordOfAngleStep(std::int64_t loadCase, std::int64_t points,
                                         std::int64_t point, std::int64_t step) {
  return (recordOfLoadCasePoint(loadCase, points, point) - 1) * kAngleSteps + step;
}

// First, middle and last record of small files, counted by hand.
// 4 modes of 3 points.
static_assert(recordOfModePoint(2, 3, 1) == 1);
static_assert(recordOfModePoint(3, 3, 2) == 5);
static_assert(recordOfModePoint(4, 3, 3) == 9);
// 2 engines, 4 modes, 20 orders.
static_assert(recordOfEngineModeOrder(1, 4, 2, 20, 1) == 1);
static_assert(recordOfEngineModeOrder(2, 4, 2, 20, 1) == 61);
static_assert(recordOfEngineModeOrder(2, 4, 4, 20, 20) == 120);
// 2 load cases, 2 sources, 4 orders, 3 points: 96 records a load case.
static_assert(recordOfFamilyElement(1, 2, 4, 3, 1, 1, 1, 1) == 1);
static_assert(recordOfFamilyElement(1, 2, 4, 3, 1, 2, 1, 4) == 16);
static_assert(recordOfFamilyElement(1, 2, 4, 3, 2, 1, 1, 1) == 49);
static_assert(recordOfFamilyElement(2, 2, 4, 3, 1, 1, 2, 3) == 103);
static_assert(recordOfFamilyElement(2, 2, 4, 3, 2, 4, 3, 4) == 192);
// 2 load cases of 3 points.
static_assert(recordOfLoadCasePoint(1, 3, 1) == 1);
static_assert(recordOfLoadCasePoint(2, 3, 3) == 6);
static_assert(recordOfAngleStep(1, 3, 1, 1) == 1);
static_assert(recordOfAngleStep(1, 3, 2, 1) == 361);
static_assert(recordOfAngleStep(2, 3, 3, 360) == 2160);
// Beyond the range of a 32-bit number: a long line, many load cases.
static_assert(recordOfFamilyElement(1000, 3, 24, 10000, 3, 24, 10000, 4) == 2'880'000'000);

}  // namespace verenwick::results
