// Command lines that the help shows.
#include "cli/help/examples.h"

#include <array>

namespace zuna_cli {

namespace {

struct Example {
  std::string_view command;
  std::string_view line;
};

constexpr auto kExamples = std::to_array<Example>({
    {"", "zuna-convert info opera.showdata"},
    {"", "zuna-convert help convert"},
    {"", "zuna-convert --key-file opera.key convert in.showdata -o out.showdata"},
    {"up", "zuna-convert up old.showdata -o new.showdata --companion old.logdata"},
    {"up", "zuna-convert up shows -r --out-dir shows-1.2 --report report.json"},
    {"up", "zuna-convert up lost.showdata -o found.showdata --show-name Opera"},
    {"down", "zuna-convert down new.showdata -o old.showdata"},
    {"down", "zuna-convert down shows --in-place --fail-on loss --accept voice-renumbered"},
    {"convert", "zuna-convert convert opera.showdata -o text.showdata --to 2.0"},
    {"check", "zuna-convert check shows -r"},
    {"check", "zuna-convert check opera.showdata --to 0.0"},
    {"diff", "zuna-convert diff monday.showdata tuesday.showdata"},
    {"diff", "zuna-convert diff --json old.logdata new.logdata"},
    {"convert", "zuna-convert convert - -o - --to 1.1 <in.showdata >out.showdata"},
    {"copy-fermatas", "zuna-convert copy-fermatas before.logdata again.logdata"},
    {"copy-fermatas", "zuna-convert copy-fermatas before.logdata again.logdata -o new.logdata"},
    {"info", "zuna-convert info opera.showdata opera.logdata"},
    {"info", "zuna-convert info --json opera.showdata"},
    {"dump", "zuna-convert dump opera.showdata"},
    {"dump", "zuna-convert dump opera.showdata -o opera.json"},
    {"dump", "zuna-convert dump --offsets opera.showdata"},
    {"build", "zuna-convert build opera.json -o opera.showdata"},
    {"build", "zuna-convert build opera.json -o opera.showdata --to 1.1"},
    {"edit", "zuna-convert edit opera.showdata"},
    {"edit", "zuna-convert edit opera.logdata"},
    {"print", "zuna-convert print opera.logdata --song 2a"},
    {"view", "zuna-convert view opera.showdata opera.logdata -o opera.html"},
    {"view", "zuna-convert view opera.showdata --diff earlier.showdata -o changes.html"},
    {"view", "zuna-convert view opera.showdata --song 2a --svg -o song.svg"},
    {"list", "zuna-convert list shows --below 1.2"},
    {"encrypt", "zuna-convert encrypt opera.json -o edited.showdata --key-file opera.key"},
    {"decrypt", "zuna-convert decrypt text.showdata -o opera.json"},
    {"decrypt", "zuna-convert decrypt text.showdata -o -"},
    {"rescue", "zuna-convert rescue broken.showdata -o saved.showdata"},
    {"rescue", "zuna-convert rescue broken.showdata -o saved.showdata --json"},
    {"midi", "zuna-convert midi import tune.mid -o tune.showdata"},
    {"midi", "zuna-convert midi export opera.showdata --out-dir songs"},
    {"midi import", "zuna-convert midi import *.mid -o opera.showdata --show-name Opera"},
    {"midi import", "zuna-convert midi import a.mid -o a.showdata --song-number 12a"},
    {"midi export", "zuna-convert midi export opera.showdata --out-dir songs"},
    {"explain", "zuna-convert explain wrong-key"},
    {"explain", "zuna-convert explain"},
    {"completion", "zuna-convert completion bash >/etc/bash_completion.d/zuna-convert"},
    {"completion", "zuna-convert completion fish | source"},
    {"help", "zuna-convert help convert"},
    {"help", "zuna-convert help midi import"},
});

}  // namespace

std::vector<std::string_view> ExamplesOf(std::string_view command) {
  std::vector<std::string_view> lines;
  for (const Example& example : kExamples) {
    if (example.command == command) lines.push_back(example.line);
  }
  return lines;
}

}  // namespace zuna_cli
