// The settings of the user's country that fields of dialogs depend on.
#pragma once

#include <cstdint>

struct LocaleSettings {
  char DecimalSeparator = '.';
  std::int32_t MeasureInches = 1;  // 0: centimetres
};

// The settings of this moment. A separator that is no single byte cannot be typed into a field of numbers
// and counts as a point.
[[nodiscard]] LocaleSettings ReadLocaleSettings();
