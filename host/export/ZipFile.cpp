#include "host/export/ZipFile.h"

#include <fmt/format.h>
#include <unzip.h>
#include <zip.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <utility>

namespace verenwick::host {
namespace {

/// Whether the archive holds just these members and each agrees with its checksum.
bool readsBack(const std::filesystem::path& path, const std::set<std::string>& members) {
  constexpr std::size_t longestName = 256;
  const std::unique_ptr<void, int (*)(unzFile)> archive(unzOpen64(path.c_str()), unzClose);
  bool whole = archive != nullptr;
  std::set<std::string> found;
  std::array<char, longestName> name{};
  std::array<char, 1 << 16> block{};
  for (int status = whole ? UNZ_OK : UNZ_ERRNO; status == UNZ_OK && whole;
       status = unzGoToNextFile(archive.get())) {
    whole = unzGetCurrentFileInfo64(archive.get(), nullptr, name.data(), name.size(), nullptr, 0,
                                    nullptr, 0) == UNZ_OK &&
            unzOpenCurrentFile(archive.get()) == UNZ_OK;
    int count = 1;
    while (whole && count > 0) {
      count = unzReadCurrentFile(archive.get(), block.data(), block.size());
    }
    // Tells of a checksum that differs.
    whole = whole && count == 0 && unzCloseCurrentFile(archive.get()) == UNZ_OK;
    found.insert(name.data());
  }
  return whole && found == members;
}

}  // namespace

ZipFile::ZipFile(WholeFile& file) : file_(&file) {
  archive_ = zipOpen64(file.temporary().c_str(), APPEND_STATUS_CREATE);
  if (archive_ == nullptr) {
    file.fail();
  }
}

ZipFile::~ZipFile() {
  if (archive_ != nullptr) {
    zipClose(archive_, nullptr);
  }
}

void ZipFile::begin(const std::string& member) {
  end();
  zip_fileinfo info{};  // the same bytes whenever they are written
  info.tmz_date.tm_year = 1980;
  info.tmz_date.tm_mday = 1;
  check(zipOpenNewFileInZip64(archive_, member.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                              Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0));
  open_ = true;
  members_.insert(member);
}

void ZipFile::write(std::string_view text) {
  check(zipWriteInFileInZip(archive_, text.data(), static_cast<unsigned>(text.size())));
}

void ZipFile::end() {
  if (std::exchange(open_, false)) {
    check(zipCloseFileInZip(archive_));
  }
}

void ZipFile::finish() {
  end();
  check(zipClose(std::exchange(archive_, nullptr), nullptr));
  if (!readsBack(file_->temporary(), members_)) {
    throw std::runtime_error(
        fmt::format("{} does not read back as it was written", file_->target().string()));
  }
}

void ZipFile::check(int status) const {
  if (status != ZIP_OK) {
    file_->fail();
  }
}

}  // namespace verenwick::host
