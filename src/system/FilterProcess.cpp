#include "system/FilterProcess.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

#include "system/SystemCall.h"

namespace starsift {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Without a name, gone when it is closed. Unlike pipes, files can't make both sides wait.
using Scratch = std::unique_ptr<std::FILE, CloseFile>;

/// The streams of the process.
class Streams {
 public:
  Streams(std::FILE* input, std::FILE* output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, fileno(input), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, fileno(output), STDOUT_FILENO);
  }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;
  ~Streams() { posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

std::string textOf(std::FILE* file) {
  std::string text;
  std::string piece(1 << 16, '\0');
  std::rewind(file);
  while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file))
    text.append(piece, 0, count);
  return text;
}

}  // namespace

std::optional<std::string> filtered(const std::string& program,
                                    const std::vector<std::string>& arguments,
                                    std::string_view input) {
  const Scratch from(std::tmpfile());
  const Scratch to(std::tmpfile());
  if (!from || !to) return std::nullopt;
  if (std::fwrite(input.data(), 1, input.size(), from.get()) != input.size()) return std::nullopt;
  if (std::fflush(from.get()) != 0) return std::nullopt;
  std::rewind(from.get());
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const Streams streams(from.get(), to.get());
  pid_t process = 0;
  if (posix_spawnp(&process, program.c_str(), streams.get(), nullptr, pointers.data(), environ) !=
      0)
    return std::nullopt;
  int status = 0;
  uninterrupted([&] { return waitpid(process, &status, 0); });
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
  return textOf(to.get());
}

}  // namespace starsift
