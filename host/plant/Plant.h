#pragma once

#include <filesystem>
#include <optional>

#include "ComponentTables/ModelBundle.h"
#include "input/InputDocument.h"

namespace verenwick::host {

/// A plant as the solver reads it, and the text that it reads.
struct Plant {
  input::InputDocument document;
  ModelBundle model;
};

/// The text of an input file. Throws std::runtime_error if it can't be read or is larger than 1
/// GiB.
input::InputDocument readDocument(const std::filesystem::path& input);

/// Reads a plant by the solver's own reader; no other file is looked at. Nothing if the solver
/// can't read it.
std::optional<Plant> readPlant(const std::filesystem::path& input);

}  // namespace verenwick::host
