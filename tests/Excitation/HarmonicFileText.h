#pragma once

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace verenwick::test {

/// A harmonic data file to be written: curves p(angle) = sum over rows of R sin(row angle + F).
struct HarmonicFileText {
  std::string columnLabel = "NMIP";
  std::vector<double> columns;                 ///< bar, or speed fraction
  std::vector<std::vector<double>> resultant;  ///< row by row, MPa
  std::vector<std::vector<double>> phase;      ///< row by row, degrees

  std::string text() const {
    std::ostringstream out;
    out.precision(12);
    const auto row = [&](const std::vector<double>& values) {
      for (const double value : values) {
        out << value << ' ';
      }
      out << '\n';
    };
    const auto block = [&](const char* keyword, auto element) {
      out << keyword << "\ncolumns\n";
      row(columns);
      out << "\nrows\n";
      for (std::size_t h = 0; h < resultant.size(); ++h) {
        std::vector<double> values{static_cast<double>(h + 1)};
        for (std::size_t c = 0; c < columns.size(); ++c) {
          values.push_back(element(h, c));
        }
        row(values);
      }
    };
    const auto radians = [&](std::size_t h, std::size_t c) { return phase[h][c] * M_PI / 180.0; };
    out << "Engine\nOrders:" << resultant.size() << '\n' << columnLabel << columns.size() << "\n\n";
    block("COSINE", [&](auto h, auto c) { return resultant[h][c] * std::sin(radians(h, c)); });
    block("SINE", [&](auto h, auto c) { return resultant[h][c] * std::cos(radians(h, c)); });
    block("RESULTANT", [&](auto h, auto c) { return resultant[h][c]; });
    block("PHASE", [&](auto h, auto c) { return phase[h][c]; });
    return out.str();
  }
};

}  // namespace verenwick::test
