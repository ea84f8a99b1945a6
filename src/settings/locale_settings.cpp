#include "settings/locale_settings.h"

#include <cstddef>

#include "platform/win32.h"

namespace {

constexpr const char* kSection = "Intl";
constexpr std::size_t kSettingBytes = 40;

bool CanPartDigits(char character) {
  return character > ' ' && character < '\x7F' && character != '-' && (character < '0' || character > '9');
}

}  // namespace

LocaleSettings ReadLocaleSettings() {
  LocaleSettings settings;
  settings.MeasureInches =
      static_cast<std::int32_t>(GetProfileIntA(kSection, "iMeasure", settings.MeasureInches));
  char separator[kSettingBytes];
  GetProfileStringA(kSection, "sDecimal", ".", separator, sizeof separator);
  if (CanPartDigits(separator[0])) settings.DecimalSeparator = separator[0];
  return settings;
}
