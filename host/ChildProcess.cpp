#include "host/ChildProcess.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

namespace verenwick::host {
namespace {

constexpr int kSignalled = 128;

std::string program() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? "verenwick" : path.string();
}

}  // namespace

struct ChildProcess::State {
  pid_t id = 0;
  std::FILE* output = nullptr;
  std::optional<int> status;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (id > 0 && !status) {
      waitpid(id, nullptr, 0);
    }
    if (output != nullptr) {
      static_cast<void>(std::fclose(output));
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

  state_->output = std::tmpfile();
  posix_spawn_file_actions_t actions;
  if (state_->output == nullptr || posix_spawn_file_actions_init(&actions) != 0) {
    throw std::runtime_error(std::string("a run can't be started: ") + std::strerror(errno));
  }
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_adddup2(&actions, fileno(state_->output), stream);
  }
  const int error =
      posix_spawnp(&state_->id, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    state_->id = 0;
    throw std::runtime_error(std::string("a run can't be started: ") + std::strerror(error));
  }
}

ChildProcess::ChildProcess(ChildProcess&&) noexcept = default;
ChildProcess& ChildProcess::operator=(ChildProcess&&) noexcept = default;
ChildProcess::~ChildProcess() = default;

std::optional<int> ChildProcess::ended() {
  int status = 0;
  if (!state_->status && waitpid(state_->id, &status, WNOHANG) == state_->id) {
    state_->status = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
  }
  return state_->status;
}

std::string ChildProcess::output() const {
  std::string text;
  std::array<char, 4096> block{};
  std::rewind(state_->output);
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), state_->output)) {
    text.append(block.data(), count);
  }
  return text;
}

}  // namespace verenwick::host
