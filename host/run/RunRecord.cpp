#include "host/run/RunRecord.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "host/WholeFile.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;
using json = nlohmann::ordered_json;

/// Of what the record holds; a program reads the formats up to its own.
constexpr int kFormat = 1;

/// A record is a few kilobytes; a log may have many lines.
constexpr std::uintmax_t kMostBytes = 256U << 20U;

constexpr std::array<std::string_view, 4> kStatusWords = {"running", "complete", "refused",
                                                          "stopped"};

[[noreturn]] void damaged(const fs::path& path, std::string_view why) {
  throw std::runtime_error(fmt::format("the run record {} is damaged: {}", path.string(), why));
}

json jsonOf(const ReadFile& file) {
  return {{"name", file.name},
          {"path", file.path.string()},
          {"bytes", file.state.bytes},
          {"sha256", file.state.checksum}};
}

ReadFile readFileOf(const json& document) {
  return {document.at("name"),
          fs::path(document.at("path").get<std::string>()),
          {document.at("bytes"), document.at("sha256")}};
}

json jsonOf(const RunRecord& record) {
  json document = {{"format", kFormat},           {"program", "verenwick"},
                   {"version", record.version},   {"command", record.command},
                   {"mode", record.mode},         {"status", wordOf(record.status)},
                   {"words", record.words},       {"started", record.started},
                   {"ended", record.ended},       {"input", jsonOf(record.input)},
                   {"dataFiles", json::array()},  {"errors", record.errors},
                   {"warnings", record.warnings}, {"orders", json::object()},
                   {"files", json::array()},      {"furtherFiles", record.furtherFiles}};
  for (const ReadFile& file : record.dataFiles) {
    document["dataFiles"].push_back(jsonOf(file));
  }
  if (record.orders.propeller) {
    document["orders"]["propeller"] = *record.orders.propeller;
  }
  for (const WrittenFile& file : record.files) {
    document["files"].push_back(
        {{"name", file.name}, {"bytes", file.state.bytes}, {"xxh3", file.state.checksum}});
  }
  return document;
}

RunRecord recordOf(const json& document) {
  RunRecord record;
  record.version = document.at("version");
  record.command = document.at("command").get<std::vector<std::string>>();
  record.mode = document.at("mode");
  const std::string status = document.at("status");
  const auto* const found = std::find(kStatusWords.begin(), kStatusWords.end(), status);
  if (found == kStatusWords.end()) {
    throw std::runtime_error("its status is unknown");
  }
  record.status = static_cast<RunStatus>(found - kStatusWords.begin());
  record.words = document.at("words");
  record.started = document.at("started");
  record.ended = document.at("ended");
  record.input = readFileOf(document.at("input"));
  for (const json& file : document.at("dataFiles")) {
    record.dataFiles.push_back(readFileOf(file));
  }
  record.errors = document.at("errors").get<std::vector<std::string>>();
  record.warnings = document.at("warnings").get<std::vector<std::string>>();
  if (const json& orders = document.at("orders"); orders.contains("propeller")) {
    record.orders.propeller = orders.at("propeller");
  }
  record.furtherFiles = document.at("furtherFiles").get<std::vector<std::string>>();
  for (const json& file : document.at("files")) {
    record.files.push_back({file.at("name"), {file.at("bytes"), file.at("xxh3")}});
  }
  return record;
}

/// The text by which a record is known to be whole.
std::string checkedText(const json& document) {
  return document.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace

std::string_view wordOf(RunStatus status) {
  return kStatusWords.at(static_cast<std::size_t>(status));
}

const WrittenFile* RunRecord::file(std::string_view name) const {
  const auto found = std::find_if(files.begin(), files.end(),
                                  [name](const WrittenFile& each) { return each.name == name; });
  return found == files.end() ? nullptr : &*found;
}

std::string momentNow() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::time_point_cast<milliseconds>(std::chrono::system_clock::now());
  const auto seconds = std::chrono::time_point_cast<std::chrono::seconds>(now);
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                     fmt::gmtime(std::chrono::system_clock::to_time_t(seconds)),
                     (now - seconds).count());
}

void writeRecord(const RunRecord& record, const fs::path& directory) {
  constexpr int kIndent = 1;
  const fs::path path = directory / kRecordName;
  json document = jsonOf(record);
  document["checksum"] = checksumOf(checkedText(document));
  WholeFile file(path);
  file.write(document.dump(kIndent, ' ', false, json::error_handler_t::replace) + "\n");
  file.bringToDisk();
  file.finish();
}

nlohmann::ordered_json endingOf(const RunRecord& record) {
  nlohmann::ordered_json ending = {{"outcome", wordOf(record.status)},
                                   {"warnings", record.warnings}};
  if (record.status != RunStatus::complete) {
    ending["errors"] = record.errors;
  }
  return ending;
}

std::optional<RunRecord> readRecord(const fs::path& directory) {
  const fs::path path = directory / kRecordName;
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return std::nullopt;
  }
  if (status.type() != fs::file_type::regular || fs::file_size(path, error) > kMostBytes || error) {
    damaged(path, "it is no file, or too large");
  }
  std::ifstream stream(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (!stream || stream.bad()) {
    damaged(path, "it can't be read");
  }
  try {
    json document = json::parse(text);
    const std::string checksum = document.at("checksum");
    document.erase("checksum");
    if (document.at("format") > kFormat) {
      damaged(path, "a later version of the program has written it");
    }
    if (checksumOf(checkedText(document)) != checksum) {
      damaged(path, "its checksum differs from what it holds");
    }
    return recordOf(document);
  } catch (const json::exception& fault) {
    damaged(path, fault.what());
  }
}

}  // namespace verenwick::host
