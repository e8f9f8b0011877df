#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// The one table of the sections of an input file: their keywords, their lines, and on each line
/// the named values in order. The solver reads by it, and whoever wants a value finds it by name.
namespace verenwick::input {

/// What a value is in the file.
enum class Type {
  integer,     ///< digits with a sign
  flag,        ///< an integer: 0 is false, any other value true
  orderCount,  ///< an integer: the orders in use, at most kOrderPlaces; below 0 means none
  real,
  word,         ///< a word, or a text in quotes
  choice,       ///< a word that stands for one of several; any other keeps the choice in force
  lineChoice,   ///< the same as the first word of a line of its own, which may be blank
  wholeLine,    ///< a path: a line of its own as it stands
  trimmedLine,  ///< a path: a line of its own without the blanks around it
};

/// The unit of a value in the file; factor x value / divisor is its value in SI units.
struct Unit {
  std::string_view text;
  double factor = 1.0;
  double divisor = 1.0;
};

/// How often a value stands behind itself.
struct Repeat {
  std::int32_t times = 1;
  /// The value of the section that gives the number instead, of which `times` is the largest.
  std::string_view countedBy = {};
};

/// A named value.
struct Field {
  std::string_view name;
  Type type;
  std::string_view meaning;
  Unit unit = {};
  Repeat repeat = {};
  /// Words of a choice, which count from 1.
  std::span<const std::string_view> words = {};
  /// A longer text is cut.
  std::size_t length = 0;
};

/// When a line stands in its section: always, or where a value of a line before it is true (a
/// flag), false, or one of its choices.
struct When {
  enum class Is { always, set, clear, chosen };
  std::string_view field = {};
  Is is = Is::always;
  std::int32_t choice = 0;
};

/// A line of a section.
struct Line {
  /// The words in which a message names the line's values; where they aren't those of its fields,
  /// they are the words by which users know the message.
  std::string_view message;
  std::span<const Field> fields;
  When when = {};
};

/// A kind of section. Its first line is the keyword line.
struct Section {
  std::string_view keyword;
  std::span<const Line> lines;
};

inline constexpr std::int32_t kOrderPlaces = 4;
inline constexpr std::int32_t kMostCylinders = 20;
/// Names of components are cut at this length.
inline constexpr std::size_t kNameLength = 20;

/// The section that is a keyword and nothing else: it asks for angle based results.
inline constexpr std::string_view kAngleBasedKeyword = "OUTPUTANGLEBASEDRESULTS";

/// The table that ends an input file; it has columns and rows of its own.
inline constexpr std::string_view kLoadCaseKeyword = "LOADCASE";

/// The kinds of components that can have a column in it.
inline constexpr std::array<std::string_view, 11> kColumnKinds = {
    "DIESEL",         "RECIPROCATINGPUMP",   "PROPELLER",
    "LINEARCOUPLING", "PROGRESSIVECOUPLING", "GEISLINGERCOUPLING",
    "ELECTRICMOTOR",  "GENERATOR",           "CENTRIFUGALPUMP",
    "GASTURBINE",     "STEAMTURBINE"};

/// All sections but LOADCASE.
std::span<const Section> sections();

/// The section of a keyword in capitals; null for a word that is none.
const Section* findSection(std::string_view keyword);

}  // namespace verenwick::input
