#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <numeric>

#include "host/check/Checks.h"

namespace verenwick::host {
namespace {

/// Ids of a part, the first ones by name and the rest as a number.
std::string someOf(const std::vector<std::int32_t>& ids) {
  constexpr std::size_t kNamed = 10;
  const std::size_t named = std::min(ids.size(), kNamed);
  std::string words = fmt::format(
      "{}", fmt::join(ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(named), ", "));
  return named == ids.size() ? words : fmt::format("{} and {} more", words, ids.size() - named);
}

/// Inertias that hang together are known by one of them.
class Parts {
 public:
  std::int32_t of(std::int32_t id) {
    while (true) {
      std::int32_t& parent = parents_.try_emplace(id, id).first->second;
      if (parent == id) {
        return id;
      }
      parent = parents_[parent];
      id = parent;
    }
  }
  /// False if both hang together already.
  bool join(std::int32_t one, std::int32_t other) {
    const std::int32_t first = of(one);
    const std::int32_t second = of(other);
    parents_[second] = first;
    return first != second;
  }

 private:
  std::map<std::int32_t, std::int32_t> parents_;
};

/// The shafts on the way from one inertia to another, by those that stand already.
std::vector<std::int32_t> wayBetween(
    const std::map<std::int32_t, std::vector<std::pair<std::int32_t, std::int32_t>>>& joined,
    std::int32_t from, std::int32_t to) {
  std::map<std::int32_t, std::pair<std::int32_t, std::int32_t>> cameFrom;
  std::vector<std::int32_t> next = {from};
  cameFrom[from] = {from, 0};
  for (std::size_t i = 0; i < next.size() && !cameFrom.contains(to); ++i) {
    const auto found = joined.find(next[i]);
    if (found == joined.end()) {
      continue;
    }
    for (const auto& [inertia, shaft] : found->second) {
      if (cameFrom.try_emplace(inertia, next[i], shaft).second) {
        next.push_back(inertia);
      }
    }
  }
  std::vector<std::int32_t> way;
  for (std::int32_t at = to; at != from; at = cameFrom[at].first) {
    way.push_back(cameFrom[at].second);
  }
  return way;
}

}  // namespace

void checkTree(const CheckedPlant& plant, Findings& to) {
  Parts parts;
  std::size_t rings = 0;
  std::map<std::int32_t, std::vector<std::pair<std::int32_t, std::int32_t>>> joined;
  for (const SectionValues* shaft : plant.all("SHAFT")) {
    const std::int32_t origin = shaft->integer("OrgNode");
    const std::int32_t destination = shaft->integer("DesNode");
    const std::int32_t id = shaft->integer("Id");
    bool isWhole = true;
    for (const std::string_view end : {"OrgNode", "DesNode"}) {
      if (plant.find("INERTIA", shaft->integer(end)) == nullptr) {
        to.add({Severity::error, "missing-inertia", lineOf(*shaft, end),
                valueWords(plant, *shaft, end), "the id of an INERTIA line",
                "write the INERTIA, or the id of the one that is meant"});
        isWhole = false;
      }
    }
    if (!isWhole) {
      continue;
    }
    constexpr std::size_t kRings = 10;
    if (!parts.join(origin, destination) && ++rings <= kRings) {
      std::vector<std::int32_t> ring = wayBetween(joined, origin, destination);
      ring.push_back(id);
      to.add({Severity::error, "ring", shaft->firstLine(),
              fmt::format("SHAFT {} closes a ring of the shafts {}", id, someOf(ring)),
              "a tree: one way from each inertia to each other",
              "take one of these shafts away, or correct its ends"});
    }
    joined[origin].emplace_back(destination, id);
    joined[destination].emplace_back(origin, id);
  }
  std::map<std::int32_t, std::vector<std::int32_t>> inertias;
  for (const SectionValues* inertia : plant.all("INERTIA")) {
    inertias[parts.of(inertia->integer("Id"))].push_back(inertia->integer("Id"));
  }
  if (inertias.size() < 2) {
    return;
  }
  std::vector<std::vector<std::int32_t>> sorted;
  sorted.reserve(inertias.size());
  for (auto& [part, ids] : inertias) {
    sorted.push_back(std::move(ids));
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& a, const auto& b) { return a.size() > b.size(); });
  constexpr std::size_t kNamed = 10;
  for (std::size_t i = 1; i < std::min(sorted.size(), kNamed); ++i) {
    to.add({Severity::error, "apart", plant.find("INERTIA", sorted[i].front())->firstLine(),
            fmt::format("no shaft leads from the part of inertia {} to that of inertia {}",
                        someOf(sorted[i]), someOf(sorted[0])),
            "one line that hangs together, with branches",
            "write the SHAFT that joins them, or correct the ends of one"});
  }
}

}  // namespace verenwick::host
