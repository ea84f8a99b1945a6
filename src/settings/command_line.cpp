#include "settings/command_line.h"

#include <algorithm>
#include <cstring>
#include <string>

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

constexpr bool EndsWord(char c) {
  return static_cast<unsigned char>(c) < 33;
}

}  // namespace

void TakeCommandWord(std::string_view word, CommandLineWords& line) {
  if (word.empty()) return;
  if (word[0] != '-' && !(kSlashBeginsOption && word[0] == '/')) {
    if (line.CommandFile[0] == '\0') Store(word, line.CommandFile, sizeof line.CommandFile);
    return;
  }
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

void FinishCommandLine(CommandLineWords& line) {
  if (line.CommandFile[0] == '\0') Store("*.*", line.CommandFile, sizeof line.CommandFile);
}
