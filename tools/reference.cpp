// Prints what the program's own tables say of its commands, option letters and profile keys, for the texts
// that are made from them: a line each, its fields with tabs between.
//
//   command  ID NAME MENU LABEL KEYS      option  LETTERS MEANING      key  SECTION KEY VALUES ABSENT
#include <cstdio>
#include <initializer_list>
#include <string>

#include "resources/menu.h"
#include "resources/version.h"
#include "settings/option_letters.h"
#include "setups/profile_keys.h"
#include "window/command_table.h"

namespace {

std::string WithoutMarks(const char* label) {
  std::string text;
  for (; *label != '\0'; ++label) {
    if (*label != '&') text += *label;
  }
  return text;
}

void Print(std::initializer_list<std::string> fields) {
  bool first = true;
  for (const std::string& field : fields) {
    std::printf("%s%s", first ? "" : "\t", field.c_str());
    first = false;
  }
  std::printf("\n");
}

void PrintCommand(const PullDown& menu, UINT id) {
  const Command* const command = FindCommand(id);
  if (command == nullptr) return;
  std::string keys = command->KeyText();
  for (std::size_t i = 1; i < std::size(command->keys); ++i) {
    const std::string other = KeyTextOf(command->keys[i]);
    if (!other.empty() && keys.find(other) == std::string::npos) keys += ", " + other;
  }
  Print({"command", std::to_string(id), command->name, WithoutMarks(menu.label), WithoutMarks(command->label),
         keys});
}

}  // namespace

int main() {
  Print({"version", kVersion});
  for (const PullDown& menu : kMenuBar) {
    for (const UINT id : menu.items)
      PrintCommand(menu, id);
  }
  for (const OptionLetterText& option : kOptionLetterTexts)
    Print({"option", option.letters, option.meaning});
  for (const OptionLetterText& option : kLongOptionTexts)
    Print({"option", option.letters, option.meaning});
  for (const ProfileKey& key : ProfileKeys())
    Print({"key", key.section, key.key, key.values, key.absent});
}
