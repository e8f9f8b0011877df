#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/plant/InputLines.h"
#include "host/plant/ShaftLine.h"

namespace verenwick::host {

/// A component as its section states it, by ids; `component` has no rows yet.
struct ComponentSection {
  Component component;
  std::vector<std::int32_t> inertiaIds;
  std::vector<std::int32_t> shaftIds;
  bool betweenInertias = false;     ///< the component is the shaft between its two inertias
  std::optional<double> stiffness;  ///< N m/rad, in place of that of its shaft
};

/// Reads on if the current line starts a component's section. Nothing if it doesn't, or if the
/// section can't be read.
std::optional<ComponentSection> readComponentSection(InputLines& lines);

}  // namespace verenwick::host
