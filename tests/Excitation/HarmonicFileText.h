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
    out << "Engine\nOrders:" << resultant.size() << '\n' << columnLabel << columns.size() << "\n\n";
    const auto block = [&](const char* keyword, auto element) {
      out << keyword << "\ncolumns\n";
      for (const double value : columns) out << value << ' ';
      out << "\n\nrows\n";
      for (std::size_t h = 0; h < resultant.size(); ++h) {
        out << h + 1;
        for (std::size_t c = 0; c < columns.size(); ++c) {
          out << ' ' << element(resultant[h][c], phase[h][c]);
        }
        out << " \n";
      }
    };
    block("COSINE", [](double r, double f) { return r * std::sin(f * M_PI / 180); });
    block("SINE", [](double r, double f) { return r * std::cos(f * M_PI / 180); });
    block("RESULTANT", [](double r, double) { return r; });
    block("PHASE", [](double, double f) { return f; });
    return out.str();
  }
};

}  // namespace verenwick::test
