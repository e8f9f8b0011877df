#pragma once

#include <string>

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Whether the file can be opened for reading.
bool ISFILEACCESSABLE(const std::string& path);

/// Reads the input file into the tables: a first pass counts the sections and sizes the tables, a
/// second one fills them. Replaces the log; the first line that can't be read ends the read.
/// @param path full path of the input file
/// @returns true on success; the words of a failure are in the log
[[nodiscard]] bool READINPUTFILE(const std::string& path, ModelBundle& model);

}  // namespace verenwick
