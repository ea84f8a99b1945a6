#include "window/service/client.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>

#include "platform/bus.h"
#include "resources/version.h"
#include "settings/command_line.h"
#include "settings/option_letters.h"

namespace {

constexpr int kWrong = 2;

using Words = std::span<const std::string_view>;

int TellWrong(const std::string& why) {
  std::fprintf(stderr, "quorl: %s\n", why.c_str());
  return kWrong;
}

int PrintHelp() {
  std::printf("Usage: quorl [options] [file]\n\n");
  std::printf("Shows a file of any size, and never changes it. Words that begin with - hold letters:\n\n");
  for (const OptionLetterText& option : kOptionLetterTexts)
    std::printf("  %-14s %s\n", option.letters, option.meaning);
  std::printf("\n");
  for (const OptionLetterText& option : kLongOptionTexts)
    std::printf("  %-20s %s\n", option.letters, option.meaning);
  return 0;
}

// Nothing when there is nobody, which is told.
std::optional<std::vector<BusViewer>> Viewers() {
  auto viewers = ViewersOnBus();
  if (!viewers) {
    TellWrong("there is no session bus");
  } else if (viewers->empty()) {
    TellWrong("no viewer takes commands (start one with -D, or take the tick off Ignore DDE in its menu)");
    viewers.reset();
  }
  return viewers;
}

int List() {
  const auto viewers = Viewers();
  if (!viewers) return kWrong;
  for (const BusViewer& viewer : *viewers)
    std::printf("%lld\t%s\n", static_cast<long long>(viewer.process), viewer.file.c_str());
  return 0;
}

int SendOne(std::int64_t process, const std::string& commands) {
  std::string why;
  switch (SendOverBus(process, commands, why)) {
    case BusAnswer::accepted:
      return 0;
    case BusAnswer::refused:
      std::fprintf(stderr, "quorl: %s\n", why.c_str());
      return 1;
    case BusAnswer::nobody:
      break;
  }
  return TellWrong("the viewer does not answer");
}

// The worst of the statuses of all strings.
int Send(std::string_view commands, std::int64_t process) {
  if (process == 0) {
    const auto viewers = Viewers();
    if (!viewers) return kWrong;
    process = viewers->front().process;
  }
  if (commands != "-") return SendOne(process, std::string(commands));
  int status = 0;
  for (std::string line; std::getline(std::cin, line);)
    status = std::max(status, SendOne(process, line));
  return status;
}

}  // namespace

bool IsClientCommand(Words words) {
  for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
    if (words[i].starts_with("--") && !IsViewerOption(words[i])) return true;
    if (TakesValue(words[i])) ++i;
  }
  return false;
}

int RunClientCommand(Words words) {
  std::optional<std::string_view> commands;
  std::int64_t process = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    const bool hasValue = i + 1 < words.size();
    if (word == "--help") return PrintHelp();
    if (word == "--version") return std::printf("quorl %s\n", kVersion) > 0 ? 0 : kWrong;
    if (word == "--list") return List();
    if (word == "--send" && hasValue) {
      commands = words[++i];
    } else if (word == "--to" && hasValue) {
      const std::string_view number = words[++i];
      const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), process);
      if (error != std::errc() || end != number.data() + number.size() || process <= 0) {
        return TellWrong("not the number of a process: " + std::string(number));
      }
    } else {
      return TellWrong("do not know what to do with " + std::string(word) +
                       "; quorl --help tells what there is");
    }
  }
  return commands ? Send(*commands, process) : TellWrong("--to needs --send");
}
