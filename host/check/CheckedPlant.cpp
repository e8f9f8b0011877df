#include "host/check/CheckedPlant.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/run/DataFiles.h"

namespace verenwick::host {

CheckedPlant::CheckedPlant(const input::InputDocument& document, const std::filesystem::path& input)
    : document_(document) {
  for (const ReadFile& file : startFolder(input, document).dataFiles) {
    dataFiles_.emplace(file.name, file.path);
  }
  std::error_code error;
  if (const auto file = input.parent_path() / kGensetFile.name;
      std::filesystem::exists(file, error)) {
    dataFiles_.emplace(kGensetFile.name, file);
  }
  for (const SectionValues& section : document.sections()) {
    const std::string_view keyword = section.section().keyword;
    if (keyword == input::kAngleBasedKeyword) {
      continue;
    }
    byKeyword_[keyword].push_back(&section);
    byId_.try_emplace({keyword, section.integer("Id")}, &section);
    if (keyword == "SHAFT") {
      shaftsAt_[section.integer("OrgNode")].push_back(&section);
      shaftsAt_[section.integer("DesNode")].push_back(&section);
    }
  }
  for (const std::string_view coupling : kCouplings) {
    for (const SectionValues* each : all(coupling)) {
      own(find("SHAFT", each->integer("ShaftNode")));
    }
  }
  for (const auto& [keyword, one, other] : kDampers) {
    for (const SectionValues* each : all(keyword)) {
      own(shaftBetween(each->integer(one), each->integer(other)));
    }
  }
}

void CheckedPlant::own(const SectionValues* shaft) {
  if (shaft != nullptr) {
    owned_.insert(shaft);
  }
}

std::span<const SectionValues* const> CheckedPlant::all(std::string_view keyword) const {
  const auto found = byKeyword_.find(keyword);
  return found == byKeyword_.end() ? std::span<const SectionValues* const>() : found->second;
}

const SectionValues* CheckedPlant::find(std::string_view keyword, std::int32_t id) const {
  const auto found = byId_.find({keyword, id});
  return found == byId_.end() ? nullptr : found->second;
}

std::span<const SectionValues* const> CheckedPlant::shaftsAt(std::int32_t inertia) const {
  const auto found = shaftsAt_.find(inertia);
  return found == shaftsAt_.end() ? std::span<const SectionValues* const>() : found->second;
}

const SectionValues* CheckedPlant::shaftBetween(std::int32_t one, std::int32_t other) const {
  for (const SectionValues* shaft : shaftsAt(one)) {
    if (std::minmax(shaft->integer("OrgNode"), shaft->integer("DesNode")) ==
        std::minmax(one, other)) {
      return shaft;
    }
  }
  return nullptr;
}

double CheckedPlant::ratioAt(std::int32_t inertia) const {
  const SectionValues* found = find("INERTIA", inertia);
  return found == nullptr ? 1.0 : found->real("RpmRatio");
}

std::optional<std::size_t> CheckedPlant::columnOf(const SectionValues& component) const {
  const auto columns = document_.columns();
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const auto& column) {
    return column.kind == component.section().keyword && column.id == component.integer("Id");
  });
  return found == columns.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - columns.begin()));
}

std::filesystem::path CheckedPlant::dataFile(const std::string& name) const {
  const auto found = dataFiles_.find(name);
  return found == dataFiles_.end() ? std::filesystem::path() : found->second;
}

std::vector<CasePower> CheckedPlant::powersOf(const SectionValues& component) const {
  constexpr double kKilowatt = 1000.0;
  std::vector<CasePower> powers;
  if (const auto column = columnOf(component)) {
    for (const auto& row : document_.loadCases()) {
      const bool isGiven = *column + 1 < row.values.size();
      powers.push_back({row.values[0].real,
                        isGiven ? row.values[*column + 1].real * kKilowatt : 0.0,
                        row.values[0].place.line});
    }
  }
  return powers;
}

std::int32_t inertiaOf(const SectionValues& machine) {
  constexpr std::array<std::string_view, 8> kNodes = {
      "Cylinders",      "ElectricMotorNode", "GeneratorNode", "CentrifugalPumpNode",
      "GasTurbineNode", "SteamTurbineNode",  "PropellerNode", "CasingNode"};
  for (const input::Line& line : machine.section().lines) {
    for (const input::Field& field : line.fields) {
      if (std::find(kNodes.begin(), kNodes.end(), field.name) != kNodes.end()) {
        return machine.integer(field.name);
      }
    }
  }
  return 0;
}

bool isThrow(const SectionValues& shaft) {
  constexpr std::int32_t kThrow = 1;
  return shaft.integer("ShaftTypeFlag") == kThrow;
}

std::string nameOf(const SectionValues& section) {
  return fmt::format("{} {}", section.section().keyword, section.integer("Id"));
}

std::int32_t lineOf(const SectionValues& section, std::string_view field) {
  const auto values = section.all(field);
  return values.empty() ? section.firstLine() : values.front().place.line;
}

std::string valueWords(const CheckedPlant& plant, const SectionValues& section,
                       std::string_view field) {
  const auto values = section.all(field);
  if (values.empty()) {
    return nameOf(section);
  }
  std::string words = fmt::format("{} {}", nameOf(section), field);
  for (const input::Value& value : values) {
    words += ' ';
    words += plant.document().token(value.place);
  }
  const std::string_view unit = section.fieldOf(values.front()).unit.text;
  return unit.empty() ? words : fmt::format("{} {}", words, unit);
}

}  // namespace verenwick::host
