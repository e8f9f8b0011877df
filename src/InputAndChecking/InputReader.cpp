#include "InputAndChecking/InputReader.h"

namespace verenwick {

bool InputReader::textLine(std::string_view fields, std::string& text) {
  if (!nextLine()) {
    return fail(fields);
  }
  text = withoutTrailingBlanks(std::string_view(line()).substr(0, kPathLength));
  return true;
}

bool InputReader::wordLine(std::string_view fields, std::string& word) {
  if (!nextLine()) {
    return fail(fields);
  }
  word = firstWord(line());
  STRINGUPCASE(word);
  return true;
}

bool InputReader::fail(std::string_view fields) {
  log_.record("Error occurs when reading \"", fields, "\" in input file line ", lineNumber());
  return false;
}

}  // namespace verenwick
