// Runs a command and tells what it cost. A large parent would count as memory of the command: a
// process begins with the peak of the one that started it. This one is smaller than any command.
//
// usage: measure COST_FILE COMMAND [ARGUMENT...]
//
// Writes processor seconds and peak memory in bytes to COST_FILE and ends with the command's
// status.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) return EXIT_FAILURE;
  const pid_t child = fork();
  if (child == 0) {
    execv(arguments[2], arguments + 2);
    std::perror(arguments[2]);
    _exit(EXIT_FAILURE);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) return EXIT_FAILURE;
  std::FILE* const file = std::fopen(arguments[1], "w");
  if (file == nullptr) return EXIT_FAILURE;
  std::fprintf(file, "%.6f %ld\n", seconds(usage.ru_utime) + seconds(usage.ru_stime),
               usage.ru_maxrss * 1024);
  std::fclose(file);
  return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
