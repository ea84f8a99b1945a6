#include "settings/command_line.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

void TakeLetter(char letter, CommandLineWords& line) {
  if (IsLetter(letter)) line.OptionLetters[UpperCase(letter) - 'A'] = letter;
}

void Store(std::string_view text, char* field, std::size_t size) {
  const std::size_t length = std::min(text.size(), size - 1);
  std::memset(field, 0, size);
  std::memcpy(field, text.data(), length);
}

void TakeSetup(std::string_view name, CommandLineWords& line) {
  name = name.substr(0, name.find('/'));
  const std::string section = std::string(kSetupPrefix).append(name);
  const bool fits = section.size() < kSetupSectionBytes;
  line.RefusedSetup = fits ? std::string_view() : name;
  Store(fits ? section : "", line.SetupSection, sizeof line.SetupSection);
}

constexpr std::string_view kServiceOption = "--service";

struct NamedOption {
  std::string_view name;
  char letter = '\0';                              // for which it stands
  std::string CommandLineWords::*value = nullptr;  // which it takes
  bool hex = false;
};
constexpr NamedOption kNamedOptions[] = {
    {"--text", 'T'},
    {"--hex", 'H'},
    {"--raw", 'R'},
    {"--at", '\0', &CommandLineWords::AskedPlace},
    {"--find", '\0', &CommandLineWords::AskedKey},
    {"--find-hex", '\0', &CommandLineWords::AskedKey, true},
    {kServiceOption, 'D'},
};

const NamedOption* FindOption(std::string_view name) {
  const auto* const found = std::ranges::find(kNamedOptions, name, &NamedOption::name);
  return found == std::end(kNamedOptions) ? nullptr : found;
}

void TakeNamedOption(std::string_view word, CommandLineWords& line) {
  const std::size_t equals = word.find('=');
  const NamedOption* const option = FindOption(word.substr(0, equals));
  if (option == nullptr || (option->value == nullptr && equals != std::string_view::npos)) {
    line.CommandFault = "there is no option " + std::string(word);
  } else if (option->value == nullptr) {
    TakeLetter(option->letter, line);
    if (option->name == kServiceOption) line.StartsHidden = true;
  } else {
    if (option->value == &CommandLineWords::AskedKey) line.KeyIsHex = option->hex;
    if (equals != std::string_view::npos) {
      line.*option->value = word.substr(equals + 1);
    } else {
      line.AwaitedValue = &(line.*option->value);
    }
  }
}

// The path of a file URI (RFC 8089) of this machine; nothing for other words.
std::string PathOfUri(std::string_view word) {
  constexpr std::string_view kScheme = "file://";
  if (!word.starts_with(kScheme)) return {};
  word.remove_prefix(kScheme.size());
  if (word.starts_with("localhost/")) word.remove_prefix(std::strlen("localhost"));
  if (!word.starts_with('/')) return {};
  std::string path;
  const auto digit = [](char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
  };
  for (std::size_t i = 0; i < word.size(); ++i) {
    const bool coded =
        word[i] == '%' && i + 2 < word.size() && digit(word[i + 1]) >= 0 && digit(word[i + 2]) >= 0;
    path += coded ? static_cast<char>(digit(word[i + 1]) * 16 + digit(word[i + 2])) : word[i];
    if (coded) i += 2;
  }
  return path;
}

void TakeFile(std::string_view word, CommandLineWords& line) {
  if (line.CommandFile[0] != '\0') return;
  std::string path = line.NamesOnly ? std::string() : PathOfUri(word);
  if (path.empty()) path = word;
  Store(path, line.CommandFile, sizeof line.CommandFile);
}

constexpr bool EndsWord(char c) {
  return static_cast<unsigned char>(c) < 33;
}

}  // namespace

void TakeCommandWord(std::string_view word, CommandLineWords& line) {
  if (line.AwaitedValue != nullptr) {
    *std::exchange(line.AwaitedValue, nullptr) = word;
    return;
  }
  if (word.empty()) return;
  if (line.NamesOnly) return TakeFile(word, line);
  if (word.starts_with("+/") && word.size() > 2) {
    line.AskedKey = word.substr(2);
    line.KeyIsHex = false;
    return;
  }
  if (word == "-") {
    line.InputIsFile = true;
    return;
  }
  if (word[0] != '-' && !(kSlashBeginsOption && word[0] == '/')) return TakeFile(word, line);
  if (word == "--") {
    line.NamesOnly = true;
    return;
  }
  if (word.starts_with("--")) return TakeNamedOption(word, line);
  if (word.size() > 1 && UpperCase(word[1]) == 'V') {
    TakeLetter(word[1], line);
    TakeSetup(word.substr(2), line);
    return;
  }
  for (const char c : word.substr(1))
    TakeLetter(c, line);
}

void ParseCommandLine(std::string_view text, CommandLineWords& line) {
  while (!text.empty()) {
    const auto begin = std::find_if_not(text.begin(), text.end(), EndsWord);
    const auto end = std::find_if(begin, text.end(), EndsWord);
    TakeCommandWord({begin, end}, line);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
  }
}

bool IsViewerOption(std::string_view word) {
  return FindOption(word.substr(0, word.find('='))) != nullptr;
}

bool TakesValue(std::string_view word) {
  const NamedOption* const option = FindOption(word);
  return option != nullptr && option->value != nullptr;
}

void FinishCommandLine(CommandLineWords& line) {
  if (line.AwaitedValue != nullptr) line.CommandFault = "the last option needs a value";
  line.InputIsFile = line.InputIsFile && line.CommandFile[0] == '\0';
  if (line.InputIsFile) Store("-", line.CommandFile, sizeof line.CommandFile);
  if (line.CommandFile[0] == '\0') Store("*.*", line.CommandFile, sizeof line.CommandFile);
}
