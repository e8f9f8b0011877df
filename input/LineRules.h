#pragma once

#include <cstddef>
#include <streambuf>
#include <string>
#include <string_view>

/// What a line of an input or data file is.
namespace verenwick::input {

/// Lines are at most this long; what stands behind is lost.
inline constexpr std::size_t kLineLength = 2600;

/// Paths hold at most this many characters.
inline constexpr std::size_t kPathLength = 1000;

/// The mark that some editors write in front of a text in UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Cuts what no line holds: a carriage return at the end of the line, the byte order mark of the
/// first line, what stands behind the longest line.
void cutLine(std::string& line, bool isFirst);

/// Every tab becomes a blank and every comma a full stop, so that a comma is a decimal point. The
/// characters keep their places.
void treatLine(std::string& line);

/// Reads a text line by line. A line ends at a line feed.
class LineReader {
 public:
  /// The next line, cut; false at the end of the text.
  [[nodiscard]] bool next(std::streambuf& text, std::string& line);

 private:
  bool atStart_ = true;
};

}  // namespace verenwick::input
