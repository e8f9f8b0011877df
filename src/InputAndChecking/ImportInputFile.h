#pragma once

#include <streambuf>
#include <string>

#include "ComponentTables/ModelBundle.h"
#include "RunControl/Log.h"

namespace verenwick {

/// Whether the file can be opened for reading.
bool ISFILEACCESSABLE(const std::string& path);

/// Reads an input text into the tables: a first pass counts the sections and sizes the tables, a
/// second one fills them; the first line that can't be read ends the read.
/// @param wantsGensetFile out: the tables lack the pressures of "Genset.txt"
/// @returns true on success; the words of a failure are in the log
[[nodiscard]] bool readTables(std::streambuf& text, Log& log, ModelBundle& model,
                              bool& wantsGensetFile);

/// Reads the input file into the tables, and "Genset.txt" where they need it. Replaces the log.
/// @param path full path of the input file
/// @returns true on success; the words of a failure are in the log
[[nodiscard]] bool READINPUTFILE(const std::string& path, ModelBundle& model);

}  // namespace verenwick
