#include "setups/setup_list.h"

#include <algorithm>

#include "platform/profile_batch.h"
#include "platform/win32.h"
#include "settings/command_line.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kListSection = "Setup List";
constexpr std::size_t kLongestName = 255;  // that is read; a hand may have written any

std::string ListKey(std::size_t number) {
  return "Setup" + std::to_string(number);
}

std::string_view WithoutBlanksBehind(std::string_view name) {
  return name.substr(0, name.find_last_not_of(" \t") + 1);
}

std::string LowerCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace

std::string SetupSectionOf(std::string_view name) {
  return std::string(kSetupPrefix).append(WithoutBlanksBehind(name));
}

std::string_view SetupNameOf(std::string_view section) {
  return section.substr(std::min(section.size(), kSetupPrefix.size()));
}

bool SetupExists(const char* profile, const char* section) {
  return !ProfileKeyNames(profile, section).empty();
}

std::vector<std::string> SetupNames(const char* profile) {
  std::vector<std::string> names;
  for (;;) {
    std::string name =
        ReadProfileText(profile, kListSection, ListKey(names.size() + 1).c_str(), "", kLongestName);
    if (name.empty()) return names;
    names.push_back(std::move(name));
  }
}

std::vector<std::string> SortedSetupNames(const char* profile) {
  std::vector<std::string> names = SetupNames(profile);
  std::ranges::stable_sort(names, {}, LowerCase);
  return names;
}

int FindSetup(const std::vector<std::string>& names, std::string_view section) {
  if (section.empty()) return -1;
  const std::string_view wanted = SetupNameOf(section);
  const auto found = std::ranges::find_if(names, [wanted](const std::string& name) {
    return SameProfileName(std::string_view(name).substr(0, wanted.size()), wanted);
  });
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

FieldCheck CheckSetupName(std::string_view name) {
  if (name.empty()) return {false, "You must select a name."};
  if (static_cast<unsigned char>(name[0]) <= ' ') {
    return {false, "The setup name must not begin with a space."};
  }
  if (SetupSectionOf(name).size() >= kSetupSectionBytes) {
    return {false, "The selected setup name is too long."};
  }
  return {};
}

void ListSetup(const char* profile, std::string_view name) {
  const std::vector<std::string> names = SetupNames(profile);
  const bool listed =
      std::ranges::any_of(names, [name](const std::string& other) { return SameProfileName(other, name); });
  if (!listed) WriteProfileText(profile, kListSection, ListKey(names.size() + 1).c_str(), std::string(name));
}

FileError RemoveSetup(const char* profile, std::string_view name) {
  return SaveProfile(profile, [=] {
    std::vector<std::string> names = SetupNames(profile);
    const std::size_t former = names.size();
    std::erase_if(names, [name](const std::string& other) { return SameProfileName(other, name); });
    for (std::size_t i = 0; i < names.size(); ++i)
      WriteProfileText(profile, kListSection, ListKey(i + 1).c_str(), names[i]);
    for (std::size_t i = names.size(); i < former; ++i)
      DeleteProfileKey(profile, kListSection, ListKey(i + 1).c_str());
    WritePrivateProfileStringA(SetupSectionOf(name).c_str(), nullptr, nullptr, profile);
  });
}
