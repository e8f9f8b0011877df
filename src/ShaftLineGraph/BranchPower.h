#pragma once

#include <cstdint>
#include <vector>

#include "ComponentTables/ModelBundle.h"
#include "ShaftLineGraph/GraphTheory.h"

namespace verenwick {

/// What the cylinders of a reciprocating pump take together.
enum class PumpPower {
  pumpPower,         ///< each cylinder a share, all of them the power of the pump
  eachCylinderWhole  ///< each cylinder the power of the pump
};

/// Machines on the shaft line as sources and sinks of power, and the power that passes a cut.
///
/// Engines, motors and turbines are sources, propellers, generators and pumps are sinks. An engine
/// gives its power in equal shares at its cylinders. A machine without a load case column has none.
class BranchPower {
 public:
  BranchPower(const ModelBundle& model, PumpPower pumps);

  /// Sum of what sources give and sinks take on one side of a cut, W; sources are positive.
  double sum(const VISITEDNODE& side, const LOADCASE_POWER& power, std::int32_t loadCase) const;

  /// Power that passes the cut between two sides in a load case, W: what the side with the larger
  /// surplus has to give. Where neither side has a surplus it is the larger demand.
  double passing(const TwoBranches& sides, const LOADCASE_POWER& power,
                 std::int32_t loadCase) const;

 private:
  struct Share {
    std::int32_t node;    ///< position of the inertia
    std::int32_t column;  ///< load case column of the machine
    double divisor;       ///< shares of the machine's power; negative for a sink
  };
  std::vector<Share> shares_;
};

}  // namespace verenwick
