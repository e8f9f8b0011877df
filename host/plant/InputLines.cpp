#include "host/plant/InputLines.h"

namespace verenwick::host {
namespace {

constexpr std::size_t kLineLength = 2600;
constexpr std::string_view kBlanks = " \t\r";

}  // namespace

bool InputLines::next() {
  if (!std::getline(stream_, written_)) {
    return false;
  }
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (first_ && written_.starts_with(byteOrderMark)) {
    written_.erase(0, byteOrderMark.size());
  }
  first_ = false;
  written_.resize(std::min(written_.size(), kLineLength));
  line_ = written_;
  std::replace(line_.begin(), line_.end(), ',', '.');
  std::replace(line_.begin(), line_.end(), '\t', ' ');
  tokens_.clear();
  const std::string_view line = line_;
  std::size_t start = line.find_first_not_of(kBlanks);
  while (start != std::string_view::npos) {
    const std::size_t end = std::min(line.find_first_of(kBlanks, start), line.size());
    tokens_.push_back(line.substr(start, end - start));
    start = line.find_first_not_of(kBlanks, end);
  }
  return true;
}

bool InputLines::startsWith(std::string_view keyword) const {
  return !tokens_.empty() &&
         std::equal(tokens_[0].begin(), tokens_[0].end(), keyword.begin(), keyword.end(),
                    [](char written, char upper) {
                      return written == upper ||
                             (written >= 'a' && written <= 'z' && written - 'a' + 'A' == upper);
                    });
}

std::string_view InputLines::treated() const {
  if (tokens_.empty()) {
    return {};
  }
  const std::string_view last = tokens_.back();
  return {tokens_[0].data(),
          static_cast<std::size_t>(last.data() + last.size() - tokens_[0].data())};
}

std::string InputLines::word(std::size_t position) const {
  const std::string text = rest(position);
  if (text.starts_with('"') || text.starts_with('\'')) {
    const std::size_t close = text.find(text[0], 1);
    return text.substr(1, std::min(close, text.size()) - 1);
  }
  return text.substr(0, text.find_first_of(kBlanks));
}

std::string InputLines::rest(std::size_t position) const {
  if (position >= tokens_.size()) {
    return {};
  }
  const auto start = static_cast<std::size_t>(tokens_[position].data() - line_.data());
  const std::size_t end = written_.find_last_not_of(kBlanks);
  return written_.substr(start, end + 1 - start);
}

}  // namespace verenwick::host
