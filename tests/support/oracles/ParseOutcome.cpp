#include "support/oracles/ParseOutcome.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "support/fixtures/ExpectFails.h"
#include "support/generators/NumberGenerators.h"

namespace starsift::test {

namespace {

NumberOutcome outcomeHere(const std::string& text) {
  NumberOutcome outcome;
  try {
    const QQ value = QQ::parse(text);
    if (value.isInf())
      outcome.infinity = value.sign() ? 1 : -1;
    else
      outcome.value = gmpRational(value);
  } catch (const std::invalid_argument& e) {
    outcome.refusal = e.what();
  }
  return outcome;
}

}  // namespace

NumberOutcome parseOutcome(const std::string& text, bool fatal) {
  if (!fatal) return outcomeHere(text);
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return {"pipe", 0, 0};
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDERR_FILENO);
    const NumberOutcome outcome = outcomeHere(text);
    _exit(2);
  }
  close(ends[1]);
  std::string report;
  std::array<char, 256> buffer{};
  for (ssize_t n = 0; (n = read(ends[0], buffer.data(), buffer.size())) > 0;)
    report.append(buffer.data(), static_cast<std::size_t>(n));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  const std::string frame = failureText("");
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 1 || report.size() < frame.size())
    return {"no report: " + report, 0, 0};
  return {report.substr(frame.size() - 1, report.size() - frame.size()), 0, 0};
}

}  // namespace starsift::test
