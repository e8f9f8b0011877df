#include "InputAndChecking/ImportInputFile.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <vector>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Sections of one file; their records take a few kilobytes each at the most.
constexpr std::int64_t kMostSections = 400'000;

/// Load cases of one file.
constexpr std::int64_t kMostLoadCases = 1'000'000;

std::string keywordOf(const std::string& line) { return input::upperCase(firstWord(line)); }

/// Number of the section kind of a keyword, from 0; the number of kinds if it is none.
std::size_t sectionOf(std::string_view keyword) {
  const auto sections = inputSections();
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const InputSection& s) { return s.keyword == keyword; });
  return static_cast<std::size_t>(found - sections.begin());
}

/// What the first pass learns of the file.
struct SectionCounts {
  std::vector<std::int32_t> ofKind = std::vector<std::int32_t>(inputSections().size());
  bool hasLoadCases = false;
  /// Lines behind the LOADCASE line that aren't blank.
  std::int32_t loadCaseLines = 0;
};

/// Counts the lines by their first word, lines inside sections included.
SectionCounts countSections(std::streambuf& text, Log& log) {
  SectionCounts counts;
  InputReader in(text, log);
  while (in.nextLine()) {
    if (counts.hasLoadCases) {
      counts.loadCaseLines += isBlank(in.line()) ? 0 : 1;
      continue;
    }
    const std::string keyword = keywordOf(in.line());
    if (keyword == input::kLoadCaseKeyword) {
      counts.hasLoadCases = true;
    } else if (const std::size_t kind = sectionOf(keyword); kind < counts.ofKind.size()) {
      ++counts.ofKind[kind];
      if (keyword == input::kAngleBasedKeyword) {
        SET_OUTPUTANGLEBASEDRESULTS(true);
      }
    }
  }
  return counts;
}

/// Sizes the tables; kinds that don't occur stay unallocated.
/// @returns the number of components, couplings and dampers included
std::int32_t sizeTables(const SectionCounts& counts, ModelBundle& model) {
  releaseTables(model);
  std::int32_t components = 0;
  for (std::size_t kind = 0; kind < counts.ofKind.size(); ++kind) {
    const InputSection& section = inputSections()[kind];
    const std::int32_t count = counts.ofKind[kind];
    if (section.allocate != nullptr && count > 0) {
      section.allocate(model, count);
    }
    components += section.isComponent ? count : 0;
  }
  if (counts.hasLoadCases) {
    ALLOCATE_LOADCASE_TABLE(model.loadCase, components);
  }
  return components;
}

/// Reads one section into the next record of its kind.
bool readSection(InputReader& in, SectionValues& values, ModelBundle& model,
                 const InputSection& section, std::int32_t position, std::int32_t counted) {
  if (!in.readKeywordLine(*input::findSection(section.keyword), values)) {
    return false;
  }
  // The first pass may have ended earlier, at a LOADCASE that is a line of another section; what
  // stands behind it has no record. Ice needs a propeller before it.
  const bool hasRecord = section.allocate == nullptr || position <= counted;
  const bool hasPropeller = section.fill != fillPropellerIce || in.state.propeller > 0;
  if (!hasRecord || !hasPropeller) {
    return in.fail();
  }
  if (!in.readFurtherLines(values)) {
    return false;
  }
  if (section.fill != nullptr) {
    section.fill(values, model, position, in);
  }
  return true;
}

/// Fills the tables in file order, up to the end of the file or through the load case table.
bool fillTables(InputReader& in, const SectionCounts& counts, ModelBundle& model) {
  std::vector<std::int32_t> read(counts.ofKind.size());
  SectionValues values;
  while (in.nextLine()) {
    const std::string keyword = keywordOf(in.line());
    if (keyword == input::kLoadCaseKeyword) {
      return readLoadCases(in, model);
    }
    const std::size_t kind = sectionOf(keyword);
    if (kind < read.size() &&
        !readSection(in, values, model, inputSections()[kind], ++read[kind], counts.ofKind[kind])) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool readTables(std::streambuf& text, Log& log, ModelBundle& model, bool& wantsGensetFile) {
  SET_OUTPUTANGLEBASEDRESULTS(false);
  wantsGensetFile = false;
  const SectionCounts counts = countSections(text, log);
  const std::int64_t sections =
      std::accumulate(counts.ofKind.begin(), counts.ofKind.end(), std::int64_t{0});
  if (sections > kMostSections) {
    log.record("Error: The input file has", sections, " sections, at most", kMostSections,
               " can be read");
    return false;
  }
  if (counts.loadCaseLines > kMostLoadCases) {
    log.record("Error: The input file has", counts.loadCaseLines, " lines behind LOADCASE, at most",
               kMostLoadCases, " can be read");
    return false;
  }
  const std::int32_t components = sizeTables(counts, model);
  if (counts.hasLoadCases && components == 0) {
    log.record("Error occurs when reading loadcase settings data : No load setting defined");
    return false;
  }
  InputReader in(text, log);
  // Two of the lines are the headers of the table.
  in.state.loadCases = counts.hasLoadCases ? counts.loadCaseLines - 2 : 0;
  in.state.shafts = ShaftsByNodes(model.shaft);
  if (!fillTables(in, counts, model)) {
    return false;
  }
  copySpeedRatios(model);
  wantsGensetFile = model.diesel.isAllocated() && in.state.isGenset == 1 && in.state.loadCases > 0;
  return true;
}

bool ISFILEACCESSABLE(const std::string& path) { return isReadableFile(path); }

bool READINPUTFILE(const std::string& path, ModelBundle& model) {
  bool wantsGensetFile = false;
  {
    Log log(Opening::replace);
    if (!log.isOpen()) {
      std::fprintf(stderr, "** Log file can't be written: %s\n",
                   resultFileAddress(results::resultFile("Verenwick.log")).c_str());
      return false;
    }
    std::filebuf text;
    if (!ISFILEACCESSABLE(path) ||
        text.open(nativePath(path), std::ios::in | std::ios::binary) == nullptr) {
      log.record("error occurs when accessing the input file", path);
      return false;
    }
    if (!readTables(text, log, model, wantsGensetFile)) {
      return false;
    }
  }
  return !wantsGensetFile || readGensetFile(model);
}

}  // namespace verenwick
