#pragma once

#include <cmath>
#include <sstream>
#include <string>

/// Input text of a large plant: three four-stroke engines, one of them a V12, through couplings on
/// one reduction gear, with a long propeller shaft and a shaft generator.
namespace verenwick::plant {

inline constexpr int kInertias = 120;
inline constexpr int kLoadCases = 40;
/// Systems that a load case solves: 24 orders of three engines, two of the propeller and the four
/// of the generator.
inline constexpr int kSolvesPerLoadCase = 3 * 24 + 2 + 4;

class ThreeEnginePlant {
 public:
  ThreeEnginePlant() {
    constexpr int kGear = 100;
    addInertia(kGear, 0.2, 5200, 0);
    engineLine(1, 1000, 6, true);
    engineLine(2, 2000, 9, false);
    engineLine(3, 3000, 9, false);
    // Shaft generator on a step-up gear.
    int generator = line(kGear, 400, 4, 2.0, 9.0, 5e6);
    sections_ << "GENERATOR 1\n"
              << generator << " 1500.0 1500.0 4\n1.0 2.0 4.0 8.0\n1.5 0.8 0.3 0.1\n";
    // The propeller shaft in as many pieces as are left.
    int propeller = line(kGear, 500, kInertias - inertias_, 0.2, 420, 4e8);
    sections_ << "PROPELLER 1\n"
              << propeller
              << " 15000.0 150.0 4 9000.0 3000.0 1\n1400.0 4800.0 1.0 0.65 0 85.0 0.0\n"
                 "ARCHER 30.0 0.0 0.0 5.0 1.5 0.0 0\n0\n";
  }

  std::string text() const {
    std::ostringstream input;
    input << rows_.str() << sections_.str()
          << "LOADCASE\nRPM 1 2 3 1 1\nDIESEL DIESEL DIESEL PROPELLER GENERATOR\n";
    for (int L = 0; L < kLoadCases; ++L) {
      const double speed = 400.0 + 350.0 * L / (kLoadCases - 1);
      const double load = std::pow(speed / 750, 3);
      input << speed << ' ' << 6000 * load << ' ' << 4500 * load << ' ' << 4500 * load << ' '
            << 14000 * load << ' ' << 1000 * load << '\n';
    }
    return input.str();
  }

 private:
  void addInertia(int id, double ratio, double inertia, double magnifier) {
    rows_ << "INERTIA " << id << ' ' << ratio << ' ' << inertia << " 0.0 " << magnifier << '\n';
    ++inertias_;
  }
  void addShaft(int from, int to, double ratio, double stiffness, double magnifier) {
    ++shafts_;
    rows_ << "SHAFT " << shafts_ << ' ' << from << ' ' << to << ' ' << ratio << ' ' << stiffness
          << " 0.0 " << magnifier << " 300.0 50.0 0 0\n";
  }
  /// A chain of plain inertias; the last one's id.
  int line(int from, int firstId, int count, double ratio, double inertia, double stiffness) {
    for (int i = 0; i < count; ++i) {
      addInertia(firstId + i, ratio, inertia, 0);
      addShaft(from, firstId + i, ratio, stiffness, 120);
      from = firstId + i;
    }
    return from;
  }
  /// Damper, cylinders, flywheel, coupling and intermediate shaft up to the gear.
  void engineLine(int id, int firstId, int cylinders, bool isVee) {
    const int damper = firstId;
    const int hub = firstId + 1;
    const int flywheel = firstId + 50;
    addInertia(damper, 1, 34, 0);
    addInertia(hub, 1, 12, 0);
    addShaft(damper, hub, 1, 1.1e6, 5);
    int last = hub;
    std::ostringstream ids, angles, bankB, status, zeros, percents;
    for (int c = 0; c < cylinders; ++c) {
      const int cylinder = firstId + 2 + c;
      addInertia(cylinder, 1, 26 + 0.1 * id, 55);
      addShaft(last, cylinder, 1, 7.6e7, 80);
      last = cylinder;
      const double angle = std::fmod(720.0 / cylinders * ((c * 4) % cylinders), 720);
      ids << cylinder << ' ';
      angles << angle << ' ';
      bankB << std::fmod(angle + 50, 720) << ' ';
      status << "1 ";
      zeros << "0 ";
      percents << "100.0 ";
    }
    addInertia(flywheel, 1, 310, 0);
    addShaft(last, flywheel, 1, 1.15e8, 80);
    addInertia(flywheel + 1, 1, 44, 0);
    addShaft(flywheel, flywheel + 1, 1, 320000, 5.5);
    sections_ << "LINEARCOUPLING " << id << '\n' << shafts_ << " 80000.0 320000.0\n";
    const int pinion = line(flywheel + 1, flywheel + 2, 6, 1.0, 11, 2e7);
    addShaft(pinion, 100, 1, 9.6e7, 100);
    sections_ << "DIESEL " << id << " Engine" << id << '\n'
              << (isVee ? 6000 : 4500) << " 750.0 4 " << cylinders << " 0.0 " << (isVee ? 1 : 0)
              << " 50.0 0 1.15\n"
              << ids.str() << '\n'
              << angles.str() << '\n'
              << (isVee ? bankB.str() : zeros.str()) << '\n'
              << status.str() << '\n'
              << (isVee ? status.str() : zeros.str()) << '\n'
              << percents.str() << '\n'
              << percents.str() << '\n'
              << "320.0 400.0 0.238 105.0 91.0 1 0 0\n200.0 160.0 1.36 1.28 15.0 4.5 50.0\n"
                 "45.0 0.8 -5.0 60.0 125.0 0.0 0.0\n";
  }

  std::ostringstream rows_;
  std::ostringstream sections_;
  int inertias_ = 0;
  int shafts_ = 0;
};

}  // namespace verenwick::plant
