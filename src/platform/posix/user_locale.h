// Which locale the environment names.
#pragma once

#include <cstdlib>
#include <string_view>

// The locale of a category such as "LC_CTYPE": LC_ALL, else the category, else LANG. May be empty.
[[nodiscard]] inline std::string_view UserLocale(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}
