#include "host/summary/UnresolvedPeaks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <map>
#include <numeric>
#include <optional>
#include <sstream>
#include <tuple>
#include <utility>

#include "host/Units.h"
#include "host/plant/Readings.h"

namespace verenwick::host {
namespace {

using results::Family;
using results::Index;
using results::Position;
using results::Quantity;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;

using Complex = std::complex<double>;

/// A peak that lifts a shaft's largest torque by less is resolved well enough.
constexpr double kLift = 1.1;
/// Shafts below this share of the plant's largest torque and stress don't count.
constexpr double kShare = 0.1;
/// Modes this far beyond the frequencies of the two load cases still have a curved response there.
constexpr double kNear = 1.25;
/// A mode as the free vibration has it.
struct Mode {
  std::int64_t number;
  double frequency;            ///< rad/s
  std::vector<double> shape;   ///< of the inertias
  std::vector<double> strain;  ///< across the shafts, at the speed of their origins
  double stiffness = 0;        ///< modal
};

/// An order of sources that turn together and so add up wave by wave.
struct Excitation {
  struct Place {
    std::int64_t source;
    std::int64_t place;
  };
  Family family;
  double ratio;
  double order;
  std::vector<Place> places;
  std::vector<std::size_t> components;
};

/// What an excitation causes at a load case.
struct Response {
  std::size_t loadCase;
  double speed;                     ///< reference speed, rpm
  double frequency;                 ///< rad/s
  std::vector<Complex> deflection;  ///< inertias
  std::vector<Complex> torque;      ///< shafts
  std::vector<double> damping;      ///< of dampers and couplings, N m s/rad
  std::vector<double> stiffness;    ///< shafts, N m/rad
};

/// The share of a mode in a response.
struct Share {
  Complex amplitude;
  Complex force;  ///< over the modal stiffness
  double frequency;
  double loss;  ///< loss factor
};

template <class Value>
Value between(const Value& low, const Value& high, double t) {
  return low + t * (high - low);
}

class PeakFinder {
 public:
  PeakFinder(const ShaftLine& line, const ResultDirectory& directory)
      : line_(line), directory_(directory) {
    readModes();
    readTotals();
    readPropellerDamping();
  }

  std::vector<UnresolvedPeak> find() {
    for (int family = 0; family < results::kFamilies; ++family) {
      findOf(static_cast<Family>(family));
    }
    // The worst first; of the peaks of one order at one place the worst alone.
    std::stable_sort(found_.begin(), found_.end(),
                     [](const Found& a, const Found& b) { return a.weight > b.weight; });
    std::vector<UnresolvedPeak> peaks;
    for (const Found& each : found_) {
      const UnresolvedPeak& peak = each.peak;
      const bool known = std::any_of(peaks.begin(), peaks.end(), [&peak](const auto& other) {
        return other.order == peak.order && other.components == peak.components &&
               std::abs(other.speed - peak.speed) < kSamePeak * peak.speed;
      });
      if (!known) {
        peaks.push_back(peak);
      }
    }
    return peaks;
  }

 private:
  struct Found {
    UnresolvedPeak peak;
    double weight;  ///< against the plant's largest torque or stress
  };

  [[nodiscard]] double originRatio(const Shaft& shaft) const {
    return line_.inertias[shaft.origin].rpmRatio;
  }

  /// The difference of deflections across a shaft, that of the far end brought to the near speed.
  template <class Value>
  [[nodiscard]] Value strainOf(const Shaft& shaft, const std::vector<Value>& deflection) const {
    return deflection[shaft.origin] -
           deflection[shaft.destination] *
               (originRatio(shaft) / line_.inertias[shaft.destination].rpmRatio);
  }

  /// A stiffness or damping of a shaft, brought to the speed of its origin.
  [[nodiscard]] double atOrigin(const Shaft& shaft, double value) const {
    const double ratio = shaft.rpmRatio / originRatio(shaft);
    return value * ratio * ratio;
  }

  void readModes() {
    const std::vector<double> frequency = frequencies(directory_);
    ResultValues deflections = directory_.open(resultFile("RelativeDeflection.bin"));
    Position at;
    for (at[Index::mode] = 2; at[Index::mode] <= static_cast<std::int64_t>(frequency.size());
         ++at[Index::mode]) {
      Mode mode{at[Index::mode],
                frequency[static_cast<std::size_t>(at[Index::mode] - 1)],
                pointValues(deflections, at),
                {}};
      for (const Shaft& shaft : line_.shafts) {
        mode.strain.push_back(strainOf(shaft, mode.shape));
        mode.stiffness +=
            atOrigin(shaft, shaft.stiffness) * mode.strain.back() * mode.strain.back();
      }
      if (std::isfinite(mode.stiffness) && mode.stiffness > 0 && mode.frequency > 0) {
        modes_.push_back(std::move(mode));
      }
    }
  }

  void readTotals() {
    ResultValues torque = directory_.open(resultFile("SynthesisTorque.bin"));
    ResultValues stress = directory_.open(resultFile("SynthesisStress.bin"));
    stated_.resize(line_.shafts.size());
    statedStress_.resize(line_.shafts.size());
    Position at;
    for (at[Index::loadCase] = 1; at[Index::loadCase] <= torque.axis(Index::loadCase)->last;
         ++at[Index::loadCase]) {
      totals_.push_back(pointValues(torque, at));
      const std::vector<double> stresses = pointValues(stress, at);
      for (std::size_t s = 0; s < stated_.size(); ++s) {
        stated_[s] = std::max(stated_[s], totals_.back()[s]);
        statedStress_[s] = std::max(statedStress_[s], stresses[s]);
      }
    }
    for (std::size_t s = 0; s < stated_.size(); ++s) {
      mostTorque_ = std::max(mostTorque_, stated_[s]);
      mostStress_ = std::max(mostStress_, statedStress_[s]);
    }
  }

  /// The damping of propellers stands in the load case settings alone: a row a load case with case,
  /// speed, blade frequency, power and damping.
  void readPropellerDamping() {
    if (!directory_.has(resultFile("LoadCaseSetting.txt"))) {
      return;
    }
    std::istringstream lines(directory_.text(resultFile("LoadCaseSetting.txt")));
    std::vector<double>* rows = nullptr;
    for (std::string text; std::getline(lines, text);) {
      std::istringstream words(text);
      std::string word;
      std::int32_t id = 0;
      double number = 0;
      if (words >> word && word == "Propeller" && words >> id) {
        rows = &propellerDamping_[id];
      } else if (word.empty()) {
        rows = nullptr;
      } else if (rows != nullptr && word.find_first_not_of("0123456789") == std::string::npos &&
                 words >> number >> number >> number >> number) {
        rows->push_back(number);
      }
    }
  }

  void findOf(Family family) {
    const auto& file = results::familyFile(family, Quantity::torque);
    if (!directory_.has(file)) {
      return;
    }
    ResultValues torque = directory_.open(file);
    ResultValues deflection = directory_.open(results::familyFile(family, Quantity::deflection));
    std::optional<ResultValues> damping;
    if (const auto& of = results::familyFile(family, Quantity::dampingTorque); directory_.has(of)) {
      damping.emplace(directory_.open(of));
    }
    const std::int64_t sources = torque.axis(Index::source)->last;
    const std::int64_t places = sources > 0 ? torque.axis(Index::order)->last : 0;
    std::map<std::pair<double, double>, Excitation> excitations;
    for (std::int64_t source = 1; source <= sources; ++source) {
      const auto row = sourceRow(line_, family, source);
      if (!row || line_.components[*row].fixedSpeed || line_.components[*row].inertias.empty()) {
        continue;
      }
      const Component& component = line_.components[*row];
      const double ratio = line_.inertias[component.inertias[0]].rpmRatio;
      for (std::int64_t place = 1; place <= places; ++place) {
        const double order = orderAt(component, family, places, place);
        if (order > 0) {
          Excitation& same = excitations[{ratio, order}];
          same.family = family;
          same.ratio = ratio;
          same.order = order;
          same.places.push_back({source, place});
          if (same.components.empty() || same.components.back() != *row) {
            same.components.push_back(*row);
          }
        }
      }
    }
    for (const auto& [key, excitation] : excitations) {
      findOf(excitation, deflection, torque, damping ? &*damping : nullptr);
    }
  }

  void findOf(const Excitation& excitation, ResultValues& deflection, ResultValues& torque,
              ResultValues* damping) {
    const auto frequencyAt = [&excitation](double speed) {
      return excitation.order * excitation.ratio * speed / kRpmOfAngularSpeed;
    };
    const auto& speeds = line_.loadCaseSpeeds;
    const double lowest = frequencyAt(*std::min_element(speeds.begin(), speeds.end())) / kNear;
    const double highest = frequencyAt(*std::max_element(speeds.begin(), speeds.end())) * kNear;
    if (std::none_of(modes_.begin(), modes_.end(), [=](const Mode& mode) {
          return mode.frequency >= lowest && mode.frequency <= highest;
        })) {
      return;
    }
    // One load case a speed: that in which the order swings most.
    std::map<double, std::pair<double, Response>> responses;
    for (std::size_t loadCase = 0; loadCase < totals_.size(); ++loadCase) {
      Response response{loadCase, speeds[loadCase], frequencyAt(speeds[loadCase]), {}, {}, {}, {}};
      response.deflection = sumOf(deflection, excitation, loadCase, line_.inertias.size());
      const double swing =
          std::accumulate(response.deflection.begin(), response.deflection.end(), 0.0,
                          [](double sum, const Complex& value) { return sum + std::norm(value); });
      if (!(response.speed > 0 && swing > 0) || !std::isfinite(swing)) {
        continue;
      }
      auto& best = responses[response.speed];
      if (swing > best.first) {
        response.torque = sumOf(torque, excitation, loadCase, line_.shafts.size());
        takeCouplings(response, damping, excitation);
        best = {swing, std::move(response)};
      }
    }
    const Response* low = nullptr;
    for (const auto& [speed, each] : responses) {
      if (low != nullptr) {
        findBetween(excitation, *low, each.second);
      }
      low = &each.second;
    }
  }

  /// The sum of the complex values of the sources at all points.
  static std::vector<Complex> sumOf(ResultValues& values, const Excitation& excitation,
                                    std::size_t loadCase, std::size_t points) {
    constexpr std::int64_t real = 3, imaginary = 4;
    std::vector<Complex> sum(points);
    Position at;
    at[Index::loadCase] = static_cast<std::int64_t>(loadCase) + 1;
    for (const auto& [source, place] : excitation.places) {
      at[Index::source] = source;
      at[Index::order] = place;
      for (at[Index::point] = 1; at[Index::point] <= static_cast<std::int64_t>(points);
           ++at[Index::point]) {
        sum[static_cast<std::size_t>(at[Index::point] - 1)] +=
            Complex(values.value(at, real), values.value(at, imaginary));
      }
    }
    return sum;
  }

  /// The stiffness of shafts at the load case, and the damping of couplings and dampers: those of
  /// couplings depend on load and frequency, and torque over strain tells them.
  void takeCouplings(Response& response, ResultValues* damping, const Excitation& excitation) {
    response.damping.resize(line_.shafts.size());
    for (const Shaft& shaft : line_.shafts) {
      response.stiffness.push_back(shaft.stiffness);
    }
    const auto dampingTorque =
        damping == nullptr ? std::vector<Complex>(line_.shafts.size())
                           : sumOf(*damping, excitation, response.loadCase, line_.shafts.size());
    for (const Component& component : line_.components) {
      for (const std::size_t s : component.shafts) {
        const Shaft& shaft = line_.shafts[s];
        const double strain = std::abs(strainOf(shaft, response.deflection));
        const double twist =
            std::abs(response.deflection[shaft.origin] - response.deflection[shaft.destination]);
        if (strain > 0 && shaft.stiffness > 0) {
          response.stiffness[s] = std::abs(response.torque[s]) / strain;
        }
        if (twist > 0) {
          response.damping[s] = std::abs(dampingTorque[s]) / (twist * response.frequency);
        }
      }
    }
  }

  /// The ring of a viscous damper, which the casing drags through the oil.
  struct Ring {
    std::size_t casing;
    std::size_t link;
    Complex drag;  ///< dynamic stiffness that it adds at the casing, N m/rad
    double half;   ///< that of the half ring which the free vibration puts there
  };

  [[nodiscard]] std::vector<Ring> ringsOf(const Response& at) const {
    std::vector<Ring> rings;
    for (const Component& component : line_.components) {
      if (component.kind == "viscous damper" && component.inertias.size() == 2 &&
          !component.shafts.empty()) {
        const std::size_t link = component.shafts[0];
        const double inertial =
            at.frequency * at.frequency * line_.inertias[component.inertias[1]].inertia;
        const Complex oil(0,
                          at.frequency * std::max(line_.shafts[link].absDamping, at.damping[link]));
        rings.push_back({component.inertias[0], link,
                         inertial > 0 ? -inertial * oil / (oil - inertial) : 0, -inertial / 2});
      }
    }
    return rings;
  }

  /// What the line loses of a mode at the frequency and operating point of a response, as a loss
  /// factor times the modal stiffness.
  [[nodiscard]] double lossOf(const Mode& mode, const Response& at,
                              const Excitation& excitation) const {
    const double w = at.frequency;
    double loss = 0;
    std::vector<double> toGround(line_.inertias.size());
    std::vector<double> across(line_.shafts.size());
    for (std::size_t s = 0; s < line_.shafts.size(); ++s) {
      const Shaft& shaft = line_.shafts[s];
      across[s] = shaft.magnifier != 0 ? at.stiffness[s] / shaft.magnifier
                                       : w * std::max(shaft.absDamping, at.damping[s]);
    }
    for (std::size_t i = 0; i < line_.inertias.size(); ++i) {
      const Inertia& inertia = line_.inertias[i];
      toGround[i] = inertia.magnifier != 0 ? w * w * inertia.inertia / inertia.magnifier
                                           : w * inertia.absDamping;
    }
    for (const Component& component : line_.components) {
      if (component.family == Family::propeller) {
        const auto found = propellerDamping_.find(component.id);
        if (found != propellerDamping_.end() && at.loadCase < found->second.size()) {
          toGround[component.inertias[0]] = w * found->second[at.loadCase];
        }
      }
      if (component.formulaDamping) {
        // The order and speed of the engine itself.
        const double rate = at.frequency * kRpmOfAngularSpeed *
                            line_.inertias[component.inertias[0]].rpmRatio / excitation.ratio;
        const auto& [cylinder, cylinderPower, crank, crankPower] = *component.formulaDamping;
        const auto has = [&component](std::size_t row) {
          return std::find(component.inertias.begin(), component.inertias.end(), row) !=
                 component.inertias.end();
        };
        for (const std::size_t row : component.inertias) {
          toGround[row] = w * cylinder * std::pow(rate, cylinderPower);
        }
        for (std::size_t s = 0; s < line_.shafts.size(); ++s) {
          if (has(line_.shafts[s].origin) && has(line_.shafts[s].destination)) {
            across[s] = w * crank * std::pow(rate, crankPower);
          }
        }
      }
    }
    for (const Ring& ring : ringsOf(at)) {
      across[ring.link] = 0;  // the ring takes no part in the mode
      loss += ring.drag.imag() * mode.shape[ring.casing] * mode.shape[ring.casing];
    }
    for (std::size_t i = 0; i < toGround.size(); ++i) {
      loss += toGround[i] * mode.shape[i] * mode.shape[i];
    }
    for (std::size_t s = 0; s < across.size(); ++s) {
      loss += atOrigin(line_.shafts[s], across[s]) * mode.strain[s] * mode.strain[s];
    }
    return loss;
  }

  [[nodiscard]] Share shareOf(const Mode& mode, const Response& at,
                              const Excitation& excitation) const {
    Complex projected = 0;
    double stiffness = 0;
    for (std::size_t s = 0; s < line_.shafts.size(); ++s) {
      const Shaft& shaft = line_.shafts[s];
      projected +=
          atOrigin(shaft, shaft.stiffness) * mode.strain[s] * strainOf(shaft, at.deflection);
      stiffness += atOrigin(shaft, at.stiffness[s]) * mode.strain[s] * mode.strain[s];
    }
    Share share{};
    share.amplitude = projected / mode.stiffness;
    // What the ring of a damper adds beyond the half ring of the free vibration counts as inertia.
    double inertial =
        mode.stiffness * at.frequency * at.frequency / (mode.frequency * mode.frequency);
    for (const Ring& ring : ringsOf(at)) {
      inertial -=
          (ring.drag.real() - ring.half) * mode.shape[ring.casing] * mode.shape[ring.casing];
    }
    share.frequency = at.frequency * std::sqrt(stiffness / inertial);
    share.loss = lossOf(mode, at, excitation) / stiffness;
    share.force = share.amplitude * dynamic(at.frequency, share.frequency, share.loss);
    return share;
  }

  /// The dynamic stiffness of a mode over its static one.
  static Complex dynamic(double frequency, double own, double loss) {
    const double ratio = frequency / own;
    return {1 - ratio * ratio, loss};
  }

  void findBetween(const Excitation& excitation, const Response& low, const Response& high) {
    struct Near {
      const Mode* mode;
      Share low, high;
    };
    std::vector<Near> modes;
    bool meets = false;
    for (const Mode& mode : modes_) {
      if (mode.frequency >= low.frequency / kNear && mode.frequency <= high.frequency * kNear) {
        modes.push_back({&mode, shareOf(mode, low, excitation), shareOf(mode, high, excitation)});
        const Near& near = modes.back();
        meets =
            meets || (low.frequency < near.low.frequency && high.frequency > near.high.frequency);
      }
    }
    if (!meets) {
      return;
    }
    const std::size_t shafts = line_.shafts.size();
    for (const Near& met : modes) {
      // How far the order is below the mode at either load case.
      const double under = met.low.frequency - low.frequency;
      const double over = high.frequency - met.high.frequency;
      if (!(under > 0 && over > 0)) {
        continue;
      }
      const double t = under / (under + over);
      const double frequency = between(low.frequency, high.frequency, t);
      UnresolvedPeak peak{excitation.components,
                          excitation.order,
                          met.mode->number,
                          between(low.speed, high.speed, t),
                          low.speed,
                          high.speed,
                          0,
                          0,
                          0};
      double weight = 0;
      for (std::size_t s = 0; s < shafts; ++s) {
        const auto rest = [&](const Response& at, Share Near::*share) {
          Complex torque = at.torque[s];
          for (const Near& near : modes) {
            torque -= at.stiffness[s] * near.mode->strain[s] * (near.*share).amplitude;
          }
          return torque;
        };
        Complex torque = between(rest(low, &Near::low), rest(high, &Near::high), t);
        const double stiffness = between(low.stiffness[s], high.stiffness[s], t);
        for (const Near& near : modes) {
          torque += stiffness * near.mode->strain[s] * between(near.low.force, near.high.force, t) /
                    dynamic(frequency, between(near.low.frequency, near.high.frequency, t),
                            between(near.low.loss, near.high.loss, t));
        }
        const double total = between(totals_[low.loadCase][s], totals_[high.loadCase][s], t) -
                             2 * between(std::abs(low.torque[s]), std::abs(high.torque[s]), t) +
                             2 * std::abs(torque);
        const double share = std::max(
            total / mostTorque_,
            statedStress_[s] > 0 ? total / stated_[s] * statedStress_[s] / mostStress_ : 0);
        if (total > kLift * stated_[s] && share >= kShare && share > weight) {
          weight = share;
          peak.shaft = s;
          peak.torque = total;
          peak.stated = stated_[s];
        }
      }
      if (weight > 0) {
        found_.push_back({std::move(peak), weight});
      }
    }
  }

  const ShaftLine& line_;
  const ResultDirectory& directory_;
  std::vector<Mode> modes_;
  std::vector<std::vector<double>> totals_;  ///< synthesised torque, load cases and shafts
  std::vector<double> stated_;               ///< the largest of each shaft
  std::vector<double> statedStress_;
  double mostTorque_ = 0;
  double mostStress_ = 0;
  std::map<std::int32_t, std::vector<double>> propellerDamping_;  ///< ids, load cases; N m s/rad
  std::vector<Found> found_;
};

/// "Port and Starboard".
std::string namesOf(const std::vector<std::size_t>& components, const ShaftLine& line) {
  std::string text;
  for (std::size_t i = 0; i < components.size(); ++i) {
    const Component& each = line.components[components[i]];
    text += i == 0 ? "" : i + 1 == components.size() ? " and " : ", ";
    text += each.name.empty() ? fmt::format("{} {}", each.kind, each.id) : each.name;
  }
  return text;
}

}  // namespace

std::vector<UnresolvedPeak> unresolvedPeaks(const ShaftLine& line,
                                            const ResultDirectory& directory) {
  if (!directory.has(resultFile("RelativeDeflection.bin")) ||
      !directory.has(resultFile("SynthesisTorque.bin")) || line.loadCaseSpeeds.empty()) {
    return {};
  }
  return PeakFinder(line, directory).find();
}

std::string wordsOf(const UnresolvedPeak& peak, const ShaftLine& line) {
  return fmt::format(
      "order {:g} of {} meets mode {} at {:.4g} rpm, between the load cases at {:.5g} and {:.5g} "
      "rpm: "
      "about {:.3g} kN m in shaft {}, which has {:.4g} kN m in the load cases",
      peak.order, namesOf(peak.components, line), peak.mode, peak.speed, peak.below, peak.above,
      peak.torque / kKilo, line.shafts[peak.shaft].id, peak.stated / kKilo);
}

}  // namespace verenwick::host
