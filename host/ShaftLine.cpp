#include "host/ShaftLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <numeric>
#include <string>
#include <string_view>
#include <unordered_map>

namespace verenwick::host {
namespace {

constexpr std::size_t kLineLength = 2600;
/// A deflection below this share of the largest one is rounding: the inertia is at rest. Where two
/// equal engines swing against each other, the line behind their gear keeps this much of noise.
constexpr double kAtRest = 1e-10;

/// The lines of an input file, each split into its tokens.
class TokenLines {
 public:
  explicit TokenLines(const std::filesystem::path& input) : stream_(input) {}

  bool next() {
    if (!std::getline(stream_, line_)) {
      return false;
    }
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (first_ && line_.starts_with(byteOrderMark)) {
      line_.erase(0, byteOrderMark.size());
    }
    first_ = false;
    line_.resize(std::min(line_.size(), kLineLength));
    std::replace(line_.begin(), line_.end(), ',', '.');
    tokens_.clear();
    constexpr std::string_view blanks = " \t\r";
    const std::string_view line = line_;
    std::size_t start = line.find_first_not_of(blanks);
    while (start != std::string_view::npos) {
      const std::size_t end = std::min(line.find_first_of(blanks, start), line.size());
      tokens_.push_back(line.substr(start, end - start));
      start = line.find_first_not_of(blanks, end);
    }
    return true;
  }

  [[nodiscard]] bool blank() const { return tokens_.empty(); }

  [[nodiscard]] bool startsWith(std::string_view keyword) const {
    return !tokens_.empty() &&
           std::equal(tokens_[0].begin(), tokens_[0].end(), keyword.begin(), keyword.end(),
                      [](char written, char upper) {
                        return written == upper ||
                               (written >= 'a' && written <= 'z' && written - 'a' + 'A' == upper);
                      });
  }

  template <class Number>
  [[nodiscard]] std::optional<Number> number(std::size_t position) const {
    if (position >= tokens_.size()) {
      return std::nullopt;
    }
    std::string token(tokens_[position]);
    std::replace_if(
        token.begin(), token.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    const char* begin = token.data() + (token.starts_with('+') ? 1 : 0);
    const char* end = token.data() + token.size();
    Number value{};
    const auto [rest, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || rest != end) {
      return std::nullopt;
    }
    return value;
  }

 private:
  std::ifstream stream_;
  std::string line_;
  std::vector<std::string_view> tokens_;
  bool first_ = true;
};

/// The speeds of the load case table, whose lines follow: ids behind "RPM", kinds, then a row a
/// load case up to a blank line.
std::vector<double> readSpeeds(TokenLines& lines) {
  while (lines.next() && !lines.startsWith("RPM")) {
  }
  lines.next();
  std::vector<double> speeds;
  while (lines.next() && !lines.blank()) {
    speeds.push_back(lines.number<double>(0).value_or(0.0));
  }
  return speeds;
}

}  // namespace

std::optional<ShaftLine> readShaftLine(const std::filesystem::path& input) {
  struct Ends {
    std::int32_t id, origin, destination;
  };
  ShaftLine line;
  std::vector<Ends> shafts;
  std::unordered_map<std::int32_t, std::size_t> rows;
  TokenLines lines(input);
  while (lines.next()) {
    if (lines.startsWith("LOADCASE")) {
      line.loadCaseSpeeds = readSpeeds(lines);
    } else if (lines.startsWith("INERTIA")) {
      const auto id = lines.number<std::int32_t>(1);
      if (!id) {
        return std::nullopt;
      }
      rows.emplace(*id, line.inertiaIds.size());
      line.inertiaIds.push_back(*id);
    } else if (lines.startsWith("SHAFT")) {
      const auto id = lines.number<std::int32_t>(1);
      const auto origin = lines.number<std::int32_t>(2);
      const auto destination = lines.number<std::int32_t>(3);
      if (!id || !origin || !destination) {
        return std::nullopt;
      }
      shafts.push_back({*id, *origin, *destination});
    }
  }
  for (const Ends& shaft : shafts) {
    const auto origin = rows.find(shaft.origin);
    const auto destination = rows.find(shaft.destination);
    if (origin == rows.end() || destination == rows.end()) {
      return std::nullopt;
    }
    line.shafts.push_back({shaft.id, origin->second, destination->second});
  }
  return line;
}

std::optional<int> nodeCount(std::span<const double> shape, std::span<const Shaft> shafts) {
  double largest = 0;
  for (const double deflection : shape) {
    if (!std::isfinite(deflection)) {
      return std::nullopt;
    }
    largest = std::max(largest, std::abs(deflection));
  }
  std::vector<int> sign(shape.size());
  std::transform(shape.begin(), shape.end(), sign.begin(), [=](double deflection) {
    if (std::abs(deflection) <= kAtRest * largest) {
      return 0;
    }
    return deflection > 0 ? 1 : -1;
  });

  // Inertias at rest that hang together are known by one of them.
  std::vector<std::size_t> group(shape.size());
  std::iota(group.begin(), group.end(), std::size_t{0});
  const auto groupOf = [&group](std::size_t row) {
    while (group[row] != row) {
      group[row] = group[group[row]];
      row = group[row];
    }
    return row;
  };
  for (const Shaft& shaft : shafts) {
    if (sign[shaft.origin] == 0 && sign[shaft.destination] == 0) {
      group[groupOf(shaft.origin)] = groupOf(shaft.destination);
    }
  }

  int nodes = 0;
  std::vector<int> neighbour(shape.size());
  for (const Shaft& shaft : shafts) {
    const int origin = sign[shaft.origin];
    const int destination = sign[shaft.destination];
    if (origin * destination < 0) {
      ++nodes;
    } else if (origin != destination) {
      const std::size_t resting = groupOf(origin == 0 ? shaft.origin : shaft.destination);
      const int swing = origin + destination;
      constexpr int counted = 2;
      if (neighbour[resting] == -swing) {
        ++nodes;
        neighbour[resting] = counted;
      } else if (neighbour[resting] == 0) {
        neighbour[resting] = swing;
      }
    }
  }
  return nodes;
}

}  // namespace verenwick::host
