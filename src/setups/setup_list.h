// The named setups of the profile: their names, in the section "Setup List", and the sections that hold them.
// A setup is known by its name; its section is called "Setup: " and the name. Knows no window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "settings/field_checks.h"

// The section of a setup; blanks at the end of the name do not count.
[[nodiscard]] std::string SetupSectionOf(std::string_view name);

// The name in a section's.
[[nodiscard]] std::string_view SetupNameOf(std::string_view section);

// Whether the profile holds anything for the setup of `section`.
[[nodiscard]] bool SetupExists(const char* profile, const char* section);

// The names, in the order in which they were first saved.
[[nodiscard]] std::vector<std::string> SetupNames(const char* profile);

// The same for a list to choose from: sorted, without regard to ASCII case.
[[nodiscard]] std::vector<std::string> SortedSetupNames(const char* profile);

// The first of `names` that begins with the name in `section`; -1 when none does, or no setup is current
// (`section` is empty).
[[nodiscard]] int FindSetup(const std::vector<std::string>& names, std::string_view section);

// Whether a setup can be saved under the name: it is not empty, begins with no blank, and its section fits
// into kSetupSectionBytes.
[[nodiscard]] FieldCheck CheckSetupName(std::string_view name);

// Writes of a save (platform/profile_batch.h): enters a name behind the others, unless the list holds it
// already, in whatever case.
void ListSetup(const char* profile, std::string_view name);

// Takes the name out of the list, where those behind it move up, and the setup's section out of the profile,
// in one replacement of it. 0, or why it failed.
[[nodiscard]] FileError RemoveSetup(const char* profile, std::string_view name);
