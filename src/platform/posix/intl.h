// How dates, times and numbers are written, in the terms of the section "intl", from the locales of the
// system: strftime formats become a picture of letters, the order of an hour and a minute, and one separator.
// Whatever a locale says that these terms cannot hold (names of months, ideographs between the numbers, years
// of an era) becomes the nearest that they can.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The picture of a date: dd or d, MM or M, yyyy or yy, in the format's order, with the first sign of
// punctuation between the first two in both places, or a slash. Empty when day, month or year is missing.
[[nodiscard]] std::string DatePictureOf(std::string_view format);

struct ClockForm {
  bool hour24 = true;
  bool leadingZero = true;
  char separator = ':';
};
// The form of a time; `withSuffix` is what %r stands for. Nothing when there is no hour in it.
[[nodiscard]] std::optional<ClockForm> ClockFormOf(std::string_view format, std::string_view withSuffix);

// The value of a key of the section, UTF-8. Nothing for an unknown key, and where the user's locale is not
// there or says nothing.
[[nodiscard]] std::optional<std::string> IntlSetting(std::string_view key);
