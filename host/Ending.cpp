#include "host/Ending.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

namespace verenwick::host {
namespace {

// The state of the program that a signal handler may touch.
using Text = std::atomic<const char*>;
static_assert(Text::is_always_lock_free && std::atomic<int>::is_always_lock_free);
std::array<Text, kUnfinishedFiles> unfinished{};
Text lastWords = nullptr;
std::atomic<bool> held = false;
std::atomic<int> caughtSignal = 0;
std::atomic<int> caughtCount = 0;

/// Calls nothing that a signal handler may not call. Files made later lie in directories made
/// earlier.
void removeUnfinished() {
  for (std::size_t slot = unfinished.size(); slot > 0; --slot) {
    const char* path = unfinished[slot - 1].exchange(nullptr);
    if (path != nullptr && unlink(path) != 0) {
      rmdir(path);
    }
  }
}

void endBySignal(int signal) {
  if (held) {
    caughtSignal = signal;
    ++caughtCount;
    return;
  }
  const int error = errno;
  removeUnfinished();
  if (const char* words = lastWords.exchange(nullptr)) {
    static_cast<void>(!write(STDERR_FILENO, words, std::strlen(words)));
  }
  errno = error;
  // Takes effect when this handler has returned.
  std::signal(signal, SIG_DFL);
  static_cast<void>(raise(signal));
}

void endByTerminate() {
  removeUnfinished();
  try {
    std::rethrow_exception(std::current_exception());
  } catch (const std::bad_alloc& error) {
    std::fputs("verenwick: ", stderr);
    std::fputs(wordsOf(error), stderr);
    std::fputs("\n", stderr);
    std::_Exit(1);
  } catch (...) {
    std::abort();
  }
}

}  // namespace

void prepareEnding() {
  std::set_terminate(endByTerminate);
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGCHLD, SIG_DFL);
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
      action.sa_handler = endBySignal;
      action.sa_flags = SA_RESTART;
      sigaction(signal, &action, nullptr);
    }
  }
}

Unfinished::Unfinished(const std::filesystem::path& path) : path_(path.string()) {
  for (std::size_t slot = 0; slot < unfinished.size(); ++slot) {
    const char* none = nullptr;
    if (unfinished[slot].compare_exchange_strong(none, path_.c_str())) {
      slot_ = slot;
      return;
    }
  }
}

Unfinished::~Unfinished() {
  if (slot_ < unfinished.size()) {
    unfinished[slot_] = nullptr;
  }
}

LastWords::LastWords(std::string text)
    : text_(std::move(text)), before_(lastWords.exchange(text_.c_str())) {}

LastWords::~LastWords() { lastWords = before_; }

HeldSignals::HeldSignals() {
  caughtSignal = 0;
  caughtCount = 0;
  held = true;
}

HeldSignals::~HeldSignals() {
  held = false;
  if (const int signal = caughtSignal) {
    static_cast<void>(raise(signal));
  }
}

std::optional<int> HeldSignals::caught() {
  const int signal = caughtSignal;
  return signal == 0 ? std::nullopt : std::optional(signal);
}

int HeldSignals::count() { return caughtCount; }

const char* wordsOf(const std::exception& error) {
  return dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? "the memory is exhausted"
                                                                : error.what();
}

std::string signalName(int signal) {
  const char* words = strsignal(signal);
  return fmt::format("signal {} ({})", signal, words == nullptr ? "unknown" : words);
}

}  // namespace verenwick::host
