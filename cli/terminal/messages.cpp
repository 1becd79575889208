// Messages on standard error.
#include "cli/terminal/messages.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "cli/terminal/text.h"

namespace zuna_cli {

namespace {

constexpr const char* kRed = "\033[31m";
constexpr const char* kPlain = "\033[0m";

bool Colourful() {
  const char* no_color = std::getenv("NO_COLOR");  // https://no-color.org
  return isatty(STDERR_FILENO) != 0 && (no_color == nullptr || *no_color == '\0');
}

}  // namespace

void PrintError(const Failure& failure) {
  if (*failure.what() == '\0') return;
  const bool colour = Colourful();
  std::cerr << (colour ? kRed : "") << "zuna-convert:" << (colour ? kPlain : "") << ' '
            << Printable(failure.what()) << '\n';
}

void PrintNote(const std::string& name, const std::string& text) {
  std::cerr << "zuna-convert: " << Printable(name + ": " + text) << '\n';
}

}  // namespace zuna_cli
