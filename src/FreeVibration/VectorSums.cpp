#include "FreeVibration/VectorSums.h"

#include <cmath>
#include <limits>
#include <span>
#include <vector>

#include "RunControl/Constants.h"
#include "RunControl/Files.h"

namespace verenwick {
namespace {

/// Cosine and sine of order x firing angle of a cylinder.
struct Direction {
  double cosine;
  double sine;
  explicit Direction(double angle) : cosine(std::cos(angle)), sine(std::sin(angle)) {}
};

/// An engine as its vector sums see it.
struct Engine {
  std::vector<double> CYLEXFOORDERS;
  std::vector<std::size_t> CYLINDEX;  ///< element of each cylinder's inertia in a mode
  std::vector<Direction> directions;  ///< order by order, cylinder by cylinder, bank A and B
  std::size_t banks;
};

Engine engineOf(const MASS_TABLE& mass, const DIESEL_RECORD& diesel, std::int32_t NO) {
  Engine engine;
  engine.banks = diesel.ISVENGINE ? 2 : 1;
  const bool isTwoStroke = diesel.NSTROKE == 2;
  std::vector<std::int32_t> rows;
  for (std::int32_t row = 1; row <= diesel.NCYLINDER; ++row) {
    const std::int32_t inertia = GET_MASS_IMASS(mass, diesel.CYLINDERS[index(row)]);
    if (inertia > 0) {
      rows.push_back(row);
      engine.CYLINDEX.push_back(index(inertia));
    }
  }
  for (std::int32_t o = 1; o <= NO; ++o) {
    const double q = isTwoStroke ? o : o * 0.5;
    engine.CYLEXFOORDERS.push_back(q);
    for (const std::int32_t row : rows) {
      engine.directions.emplace_back(q * diesel.FIRINGANGLEA[index(row)]);
      if (engine.banks == 2) {
        engine.directions.emplace_back(q * diesel.FIRINGANGLEB[index(row)]);
      }
    }
  }
  return engine;
}

/// One engine's results, mode by mode, order by order.
struct EngineSums {
  std::vector<double> VECTORSUM;
  std::vector<double> VECTORSUMANGLE;
  std::vector<double> VECTORSUMRPM;
};

/// The order with the largest sum of a mode, the first one on a tie.
std::size_t largestOrder(std::span<const double> sums) {
  std::size_t largest = 0;
  double value = -std::numeric_limits<double>::infinity();
  for (std::size_t o = 0; o < sums.size(); ++o) {
    if (sums[o] > value) {
      value = sums[o];
      largest = o;
    }
  }
  return largest;
}

/// Refers the orders of a mode to the largest one.
void normalise(std::span<double> sums, std::span<double> angles) {
  const std::size_t largest = largestOrder(sums);
  const double Vm = sums[largest];
  const double Am = angles[largest];
  for (double& sum : sums) {
    sum /= Vm;
  }
  for (double& angle : angles) {
    angle -= Am;
    if (angle < 0.0) {
      angle += 2 * kPi;
    }
  }
}

/// @param firstAngles finished angles of the first engine; none for the first engine itself
EngineSums sumsOf(const Engine& engine, std::size_t inertias, std::span<const double> D,
                  std::span<const double> RELATIVEDEFLECTION,
                  const std::vector<double>* firstAngles) {
  const std::size_t NO = engine.CYLEXFOORDERS.size();
  EngineSums sums;
  for (std::size_t mode = 1; mode < D.size(); ++mode) {
    const auto shape = RELATIVEDEFLECTION.subspan((mode - 1) * inertias, inertias);
    auto direction = engine.directions.begin();
    for (const double q : engine.CYLEXFOORDERS) {
      double C = 0.0;
      double S = 0.0;
      for (const std::size_t cylinder : engine.CYLINDEX) {
        // Both banks sit on one crank throw.
        for (std::size_t bank = 0; bank < engine.banks; ++bank, ++direction) {
          C += shape[cylinder] * direction->cosine;
          S += shape[cylinder] * direction->sine;
        }
      }
      const double length = std::sqrt(C * C + S * S);
      double angle = std::acos(C / length);
      angle = S < 0.0 ? -angle : angle;
      if (angle < 0.0) {
        // An angle below zero is taken from the first engine, whichever engine this is.
        const std::size_t x = sums.VECTORSUMANGLE.size();
        angle = (firstAngles != nullptr ? (*firstAngles)[x] : angle) + 2 * kPi;
      }
      sums.VECTORSUM.push_back(2 * length);
      sums.VECTORSUMANGLE.push_back(angle);
      sums.VECTORSUMRPM.push_back(((D[mode] * 30) / kPi) / q);
    }
    normalise(std::span(sums.VECTORSUM).last(NO), std::span(sums.VECTORSUMANGLE).last(NO));
  }
  return sums;
}

}  // namespace

void VECTORSUMS(const MASS_TABLE& mass, const DIESEL_TABLE& diesel, std::int32_t N,
                std::span<const double> D, std::span<const double> RELATIVEDEFLECTION) {
  const auto inertias = static_cast<std::size_t>(mass.number());
  const std::int32_t fourStroke = firstPosition(
      diesel, [&](std::int32_t iDiesel) { return GET_DIESEL_NSTROKE(diesel, iDiesel) == 4; });
  const std::int32_t NO = fourStroke > 0 ? results::kHalfOrders : results::kWholeOrders;
  DirectAccessFile sumFile(results::resultFile("VectorSum.bin"));
  DirectAccessFile speedFile(results::resultFile("VectorSumRpm.bin"));
  DirectAccessFile angleFile(results::resultFile("VectorSumAngle.bin"));
  std::int64_t record = 1;
  std::vector<double> firstAngles;
  // Engine by engine, so that the room doesn't grow with their number.
  for (std::int32_t iDiesel = 1; iDiesel <= diesel.number(); ++iDiesel) {
    EngineSums sums = sumsOf(engineOf(mass, diesel.at(iDiesel), NO), inertias,
                             D.first(static_cast<std::size_t>(N)), RELATIVEDEFLECTION,
                             iDiesel == 1 ? nullptr : &firstAngles);
    sumFile.write(record, sums.VECTORSUM);
    speedFile.write(record, sums.VECTORSUMRPM);
    angleFile.write(record, sums.VECTORSUMANGLE);
    record += static_cast<std::int64_t>(sums.VECTORSUM.size());
    if (iDiesel == 1) {
      firstAngles = std::move(sums.VECTORSUMANGLE);
    }
  }
  sumFile.close();
  speedFile.close();
  angleFile.close();
}

}  // namespace verenwick
