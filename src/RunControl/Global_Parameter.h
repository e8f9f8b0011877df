#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "input/LineRules.h"

/// What every file-writing step shares: the result directory, the path builder, the unit numbers.
/// All of it is static and outlives a run.
namespace verenwick {

using input::kPathLength;

/// Sets the directory of all result files.
/// @param DIRNAME the directory, blank-padded; left-shifted in place
/// @param N       its length in characters
void SETRESULTFILEDIR(std::string& DIRNAME, std::int32_t N);

/// The directory in force; it ends in a backslash, or is blank for the current directory.
const std::string& GET_RESULTFILEDIR();

/// Directory and name joined by exactly one backslash, cut at 1000 characters. A slash is no
/// separator. A blank directory is the current one: the name stands alone.
/// @param FILEDIR left-shifted in place
std::string FILEFULLADDRESS(std::string& FILEDIR, const std::string& FILENAME);

/// Full path of a file in the result directory.
std::string resultFileAddress(std::string_view name);

/// A unit number not yet handed out in this process: 10, 20, 30 and so on.
std::int32_t GETFILEID();

/// Whether the input file in force asks for angle based results; outlives the run that set it.
bool GET_OUTPUTANGLEBASEDRESULTS();
void SET_OUTPUTANGLEBASEDRESULTS(bool value);

}  // namespace verenwick
