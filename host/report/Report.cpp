#include "host/report/Report.h"

#include <string>

#include "host/WholeFile.h"
#include "host/report/ReportData.h"
#include "host/report/ReportPage.h"

namespace verenwick::host {
namespace {

/// The document as the text of a script element: nothing in it may end the element.
std::string scriptText(const nlohmann::json& data) {
  std::string text = data.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

}  // namespace

void writeReport(const std::filesystem::path& input, const results::ResultDirectory& directory,
                 const std::filesystem::path& output, const std::string& remark) {
  nlohmann::json document = reportData(input, directory);
  document["remark"] = remark;
  const std::string data = scriptText(document);
  const std::string_view page = reportPage();
  const std::size_t marker = page.find(kDataMarker);
  WholeFile file(output);
  file.write(page.substr(0, marker));
  file.write(data);
  file.write(page.substr(marker + kDataMarker.size()));
  file.finish();
}

}  // namespace verenwick::host
