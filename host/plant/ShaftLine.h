#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "results/ResultFileTable.h"

/// A plant's shaft line as it was calculated, to name the points of the results and to draw them.
namespace verenwick::host {

/// An inertia.
struct Inertia {
  std::int32_t id;
  double rpmRatio;    ///< speed over the reference speed
  double inertia;     ///< kg m2
  double absDamping;  ///< to ground, N m s/rad
  double magnifier;   ///< dynamic magnifier; 0 where the absolute damping acts
  std::string name;   ///< the remark behind its values
};

/// A shaft: its id and the rows of the inertias at its ends, from 0.
struct Shaft {
  std::int32_t id;
  std::size_t origin;
  std::size_t destination;
  double rpmRatio;       ///< speed over the reference speed
  double stiffness;      ///< N m/rad
  double absDamping;     ///< N m s/rad
  double magnifier;      ///< dynamic magnifier; 0 where the absolute damping acts
  double outerDiameter;  ///< m
  double innerDiameter;  ///< m
  std::string name;      ///< the remark behind its values
};

/// A machine, coupling or damper on the line.
struct Component {
  std::string_view kind;  ///< "diesel", "viscous damper", ...
  std::int32_t id;
  std::string name;                       ///< empty unless the input file gives one
  std::optional<results::Family> family;  ///< of what excites the line
  std::vector<std::size_t> inertias;      ///< rows, cylinders in their order; from 0
  std::vector<std::size_t> shafts;        ///< rows, from 0
  double power = 0;                       ///< rated, W; 0 for couplings and dampers
  double speed = 0;                       ///< rated, rpm
  std::vector<double> orders;        ///< of excitation, in their places; 0 where one isn't used;
                                     ///< empty where the run decides them
  std::optional<double> fixedSpeed;  ///< rpm that the orders belong to at every load case
  /// Of an engine's cylinders and crank throws, N m s/rad: factor and power of order times rpm.
  std::optional<std::array<double, 4>> formulaDamping;
  bool ice = false;  ///< of a propeller: ice excites it
};

/// The shaft line of an input file, rows in the order of the file as in the result files.
struct ShaftLine {
  std::string title;  ///< the first words of the file, if it begins with free text
  std::vector<Inertia> inertias;
  std::vector<Shaft> shafts;
  std::vector<Component> components;
  std::vector<double> loadCaseSpeeds;  ///< rpm
};

/// Reads an input file for naming and drawing. Nothing if the solver can't read it, or if a shaft
/// joins an inertia that isn't there; whether it is a good input file is for the solver to say.
std::optional<ShaftLine> readShaftLine(const std::filesystem::path& input);

/// The number of orders that the result files of the propellers have.
std::int64_t propellerOrders(const ShaftLine& line);

/// A node of a mode shape: on a shaft, at a share of its length from the origin.
struct ShapeNode {
  std::size_t shaft;
  double along;
};

/// A deflection below this share of the largest one is rounding: the inertia is at rest. Where two
/// equal engines swing against each other, the line behind their gear keeps this much of noise.
inline constexpr double kAtRest = 1e-10;

/// The nodes of a mode shape, one relative deflection an inertia: one lies on each shaft whose ends
/// swing against each other. Inertias at rest that hang together are one node if their neighbours
/// swing against each other. Nothing if the shape isn't finite.
std::optional<std::vector<ShapeNode>> shapeNodes(std::span<const double> shape,
                                                 std::span<const Shaft> shafts);

}  // namespace verenwick::host
