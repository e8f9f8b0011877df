#include "host/run/ChildProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <thread>
#include <utility>

#include "host/Ending.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

namespace verenwick::host {
namespace {

constexpr int kSignalled = 128;

std::string program() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? "verenwick" : path.string();
}

[[noreturn]] void failToStart(int error) {
  throw std::runtime_error(fmt::format("a process can't be started: {}", std::strerror(error)));
}

/// A descriptor, closed in the end.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { set(-1); }

  void set(int number) {
    if (const int before = std::exchange(number_, number); before >= 0) {
      close(before);
    }
  }
  operator int() const { return number_; }

 private:
  int number_ = -1;
};

}  // namespace

struct ChildProcess::State {
  pid_t id = 0;
  Descriptor printed;  ///< the end of a pipe
  std::string words;
  bool running = false;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    constexpr int tries = 100;
    constexpr auto pause = std::chrono::milliseconds(20);
    for (int tried = 0; running; ++tried) {
      kill(id, tried < tries ? SIGTERM : SIGKILL);
      std::this_thread::sleep_for(pause);
      if (waitpid(id, nullptr, WNOHANG) != 0) {
        return;
      }
    }
  }

  /// Takes in what the process has printed since, so that it never waits for a full pipe.
  void takeIn() {
    constexpr std::size_t blockBytes = 1 << 16;
    std::array<char, blockBytes> block{};
    ssize_t count = 0;
    while ((count = read(printed, block.data(), block.size())) > 0) {
      words.append(block.data(), static_cast<std::size_t>(count));
    }
  }
};

ChildProcess::ChildProcess(const std::vector<std::string>& words)
    : state_(std::make_unique<State>()) {
  std::vector<std::string> line{program()};
  line.insert(line.end(), words.begin(), words.end());
  std::vector<char*> arguments;
  arguments.reserve(line.size() + 1);
  for (std::string& word : line) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);

  // A pipe and no file: it needs no temporary space.
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    failToStart(errno);
  }
  state_->printed.set(ends[0]);
  const Descriptor prints(ends[1]);
  fcntl(ends[0], F_SETFL, O_NONBLOCK);
  for (const int end : ends) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  posix_spawn_file_actions_t actions;
  if (const int error = posix_spawn_file_actions_init(&actions)) {
    failToStart(error);
  }
  int error = 0;
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    if (error == 0) {
      error = posix_spawn_file_actions_adddup2(&actions, prints, stream);
    }
  }
  if (error == 0) {
    error = posix_spawnp(&state_->id, arguments[0], &actions, nullptr, arguments.data(), environ);
  }
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    failToStart(error);
  }
  state_->running = true;
}

ChildProcess::ChildProcess(ChildProcess&&) noexcept = default;
ChildProcess& ChildProcess::operator=(ChildProcess&&) noexcept = default;
ChildProcess::~ChildProcess() = default;

std::optional<ChildEnd> ChildProcess::ended() {
  state_->takeIn();
  int status = 0;
  const pid_t id = waitpid(state_->id, &status, WNOHANG);
  if (id == 0 || (id < 0 && errno == EINTR)) {
    return std::nullopt;
  }
  state_->running = false;
  state_->takeIn();
  ChildEnd end{1, std::move(state_->words)};
  if (id < 0) {
    end.words += "verenwick: the end of the run is not known\n";
  } else if (WIFEXITED(status)) {
    end.status = WEXITSTATUS(status);
  } else {
    end.status = kSignalled + WTERMSIG(status);
    end.words += fmt::format("verenwick: ended by {}\n", signalName(WTERMSIG(status)));
  }
  return end;
}

void ChildProcess::stop(bool atOnce) { kill(state_->id, atOnce ? SIGKILL : SIGTERM); }

void workApart(const std::function<void()>& work) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    failToStart(errno);
  }
  const Descriptor told(ends[0]);
  Descriptor tells(ends[1]);
  // A signal takes effect when the process is gone and writes nothing any more.
  const HeldSignals held;
  const pid_t id = fork();
  if (id == 0) {
    try {
      work();
      _exit(0);
    } catch (const std::exception& error) {
      const char* words = wordsOf(error);
      static_cast<void>(!write(tells, words, std::strlen(words)));
    }
    _exit(1);
  }
  if (id < 0) {
    failToStart(errno);
  }
  tells.set(-1);
  constexpr int pause = 50;  // ms
  pollfd ending{told, POLLIN, 0};
  while (poll(&ending, 1, pause) <= 0) {
    if (HeldSignals::caught()) {
      kill(id, SIGKILL);
    }
  }
  std::array<char, 4096> words{};
  const ssize_t length = read(told, words.data(), words.size());
  int status = 0;
  while (waitpid(id, &status, 0) < 0 && errno == EINTR) {
  }
  if (length > 0) {
    throw std::runtime_error(std::string(words.data(), static_cast<std::size_t>(length)));
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::bad_alloc();
  }
}

}  // namespace verenwick::host
