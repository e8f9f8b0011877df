#include "FreeVibration/RelativeModes.h"

#include <cmath>

#include "RunControl/Files.h"
#include "RunControl/Positions.h"

namespace verenwick {
namespace {

/// Degree of freedom of each inertia row in the free problem, from 0; none for a ring.
constexpr std::int32_t kNone = -1;
std::vector<std::int32_t> degreesOfFreedom(const MASS_TABLE& mass) {
  std::vector<std::int32_t> dof;
  std::int32_t next = 0;
  for (std::int32_t i = 1; i <= mass.number(); ++i) {
    const bool isRing = GET_MASS_MASSTYPE(mass, i) == MassType::viscousDamperRing;
    dof.push_back(isRing ? kNone : next++);
  }
  return dof;
}

/// The component of largest magnitude among the inertias of a kind, with its sign; 0 if there is
/// none that moves.
double largestOf(const MASS_TABLE& mass, MassType kind, std::span<const std::int32_t> dof,
                 std::span<const double> mode) {
  double largest = 0.0;
  double reference = 0.0;
  for (std::int32_t i = 1; i <= mass.number(); ++i) {
    if (GET_MASS_MASSTYPE(mass, i) != kind) {
      continue;
    }
    const double value = mode[asSize(dof[index(i)])];
    if (std::fabs(value) > largest) {
      largest = std::fabs(value);
      reference = value;
    }
  }
  return reference;
}

double referenceOf(const ModelBundle& model, std::span<const std::int32_t> dof,
                   std::span<const double> mode) {
  if (model.diesel.isAllocated()) {
    return largestOf(model.mass, MassType::dieselCylinder, dof, mode);
  }
  if (model.propeller.isAllocated()) {
    return largestOf(model.mass, MassType::propeller, dof, mode);
  }
  return mode.front();
}

void writeModes(const results::ResultFile& row, std::span<const double> values) {
  DirectAccessFile file(row);
  file.write(1, values);
  file.close();
}

}  // namespace

std::vector<double> RELATIVEINERTIADEFLECTION(const ModelBundle& model, std::int32_t N,
                                              std::span<const double> V) {
  const std::int32_t inertias = GET_MASS_NUMBER(model.mass);
  const std::vector<std::int32_t> dof = degreesOfFreedom(model.mass);
  std::vector<double> RELATIVEDEFLECTION(asSize(N - 1) * asSize(inertias));
  // The mode at the real speed of each inertia, not at the reference speed.
  std::vector<double> mode(asSize(N));
  for (std::int32_t m = 2; m <= N; ++m) {
    const auto referred = V.subspan(asSize(m - 1) * asSize(N), asSize(N));
    for (std::int32_t i = 1; i <= inertias; ++i) {
      if (const std::int32_t d = dof[index(i)]; d != kNone) {
        mode[asSize(d)] = referred[asSize(d)] * GET_MASS_RPMRATIO(model.mass, i);
      }
    }
    const double reference = referenceOf(model, dof, mode);
    for (std::int32_t i = 1; i <= inertias; ++i) {
      if (const std::int32_t d = dof[index(i)]; d != kNone) {
        RELATIVEDEFLECTION[asSize(m - 2) * asSize(inertias) + index(i)] =
            mode[asSize(d)] / reference;
      }
    }
  }
  writeModes(results::resultFile("RelativeDeflection.bin"), RELATIVEDEFLECTION);
  return RELATIVEDEFLECTION;
}

std::vector<double> RELATIVEINERTIATORQUE(const ModelBundle& model, std::int32_t N,
                                          std::span<const double> RELATIVEDEFLECTION) {
  const auto inertias = asSize(GET_MASS_NUMBER(model.mass));
  const std::int32_t shafts = GET_SHAFT_NUMBER(model.shaft);
  std::vector<double> RELATIVETORQUE(asSize(N - 1) * asSize(shafts));
  for (std::int32_t s = 1; s <= shafts; ++s) {
    const SHAFT_RECORD& shaft = model.shaft.at(s);
    if (shaft.SHAFTTYPE == ShaftType::viscousDamperLink) {
      continue;
    }
    const std::size_t i = index(GET_MASS_IMASS(model.mass, shaft.ORGNODE));
    const std::size_t j = index(GET_MASS_IMASS(model.mass, shaft.DESNODE));
    for (std::size_t m = 0; m < asSize(N - 1); ++m) {
      const auto mode = RELATIVEDEFLECTION.subspan(m * inertias, inertias);
      RELATIVETORQUE[m * asSize(shafts) + index(s)] = shaft.STIFFNESS * (mode[i] - mode[j]);
    }
  }
  writeModes(results::resultFile("RelativeTorque.bin"), RELATIVETORQUE);
  return RELATIVETORQUE;
}

}  // namespace verenwick
