#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/check/Finding.h"
#include "input/InputDocument.h"

namespace verenwick::host {

using input::SectionValues;

/// The couplings' keywords.
inline constexpr std::array<std::string_view, 3> kCouplings = {
    "LINEARCOUPLING", "PROGRESSIVECOUPLING", "GEISLINGERCOUPLING"};

/// A damper's keyword and the names of its two inertias.
struct DamperWords {
  std::string_view keyword, one, other;
};
inline constexpr std::array kDampers = {
    DamperWords{"VISCOUSDAMPER", "CasingNode", "RingNode"},
    DamperWords{"RUBBERDAMPER", "TurningMassNode", "DrivePlateNode"},
    DamperWords{"STEELSPRINGDAMPER", "OuterMemberNode", "InnerMemberNode"}};

/// A power of the load case table.
struct CasePower {
  double rpm;    ///< of the load case, at the reference speed
  double power;  ///< W
  std::int32_t line;
};

/// A plant as its input file states it, with the ways from one section to another that checks need.
class CheckedPlant {
 public:
  /// The document of this input file; data files are looked for as a run looks for them.
  CheckedPlant(const input::InputDocument& document, const std::filesystem::path& input);

  [[nodiscard]] const input::InputDocument& document() const { return document_; }
  /// All sections of a keyword, in the order of the file.
  [[nodiscard]] std::span<const SectionValues* const> all(std::string_view keyword) const;
  /// The first section of a keyword with an id; null if there is none.
  [[nodiscard]] const SectionValues* find(std::string_view keyword, std::int32_t id) const;
  /// The shaft between two inertias, whichever way round; null if there is none.
  [[nodiscard]] const SectionValues* shaftBetween(std::int32_t one, std::int32_t other) const;
  /// Shafts with an end at an inertia.
  [[nodiscard]] std::span<const SectionValues* const> shaftsAt(std::int32_t inertia) const;
  /// The speed ratio of an inertia; 1 where it isn't there.
  [[nodiscard]] double ratioAt(std::int32_t inertia) const;
  /// Whether a coupling or damper decides what the shaft is.
  [[nodiscard]] bool isOwned(const SectionValues& shaft) const { return owned_.contains(&shaft); }

  /// The column of a component in the load case table, from 0; nothing if it has none.
  [[nodiscard]] std::optional<std::size_t> columnOf(const SectionValues& component) const;
  /// The data file that a value names; empty if it isn't found.
  [[nodiscard]] std::filesystem::path dataFile(const std::string& name) const;
  /// Its powers, one a load case; none if it has no column.
  [[nodiscard]] std::vector<CasePower> powersOf(const SectionValues& component) const;

 private:
  void own(const SectionValues* shaft);

  const input::InputDocument& document_;
  std::map<std::string, std::filesystem::path> dataFiles_;
  std::map<std::string_view, std::vector<const SectionValues*>> byKeyword_;
  std::map<std::pair<std::string_view, std::int32_t>, const SectionValues*> byId_;
  std::map<std::int32_t, std::vector<const SectionValues*>> shaftsAt_;
  std::set<const SectionValues*> owned_;
};

/// The inertia that a machine sits on, its first cylinder's where it has several; 0 for none.
std::int32_t inertiaOf(const SectionValues& machine);

/// Whether a shaft is the crank throw of an engine.
bool isThrow(const SectionValues& shaft);

/// A component by its keyword and id, as messages name it: "SHAFT 5".
std::string nameOf(const SectionValues& section);

/// The line of a value.
std::int32_t lineOf(const SectionValues& section, std::string_view field);

/// "SHAFT 5 Stiffness 1.2 N m/rad": a value as the file has it, or all of a list.
std::string valueWords(const CheckedPlant& plant, const SectionValues& section,
                       std::string_view field);

}  // namespace verenwick::host
