#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

/// What the host itself reads of an input file, to name the points of the results.
namespace verenwick::host {

/// A shaft: its id and the rows of the inertias at its ends, from 0.
struct Shaft {
  std::int32_t id;
  std::size_t origin;
  std::size_t destination;
};

/// The shaft line of an input file, rows in the order of the file as in the result files.
struct ShaftLine {
  std::vector<std::int32_t> inertiaIds;
  std::vector<Shaft> shafts;
  std::vector<double> loadCaseSpeeds;  ///< rpm
};

/// Reads the INERTIA and SHAFT lines and the speeds of the load cases. Nothing if the file can't be
/// read so; whether it is a good input file is for the solver to say.
std::optional<ShaftLine> readShaftLine(const std::filesystem::path& input);

/// The number of nodes of a mode shape, one relative deflection an inertia: a node lies on each
/// shaft whose ends swing against each other. Inertias at rest that hang together are one node if
/// their neighbours swing against each other. Nothing if the shape isn't finite.
std::optional<int> nodeCount(std::span<const double> shape, std::span<const Shaft> shafts);

}  // namespace verenwick::host
