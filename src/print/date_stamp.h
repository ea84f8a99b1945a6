// The date and time of a printed heading, written as the user's country does. Texts are UTF-8; what is too
// long for its field is cut behind a whole character.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

// Characters of the fields.
inline constexpr std::size_t kSuffixCharacters = 4;
inline constexpr std::size_t kPictureCharacters = 11;

struct IntlSettings {
  std::int32_t Hour24 = 0;          // 0: a 12-hour clock with a suffix
  std::int32_t HourZero = 1;        // not 0: the hour has a leading zero
  std::string TimeSeparator = ":";  // one character
  std::string AmText = "AM";
  std::string PmText = "PM";
  std::string ShortDatePicture = "MM/dd/yy";
};

// The settings of this moment, for a whole job.
[[nodiscard]] IntlSettings LoadIntlSettings();

// A date by the looks of the picture: the order by its first letter; a leading zero of day and month where
// the letter stands twice; four digits of the year where its letter stands three times. The character behind
// the last M stands in both places, a slash where there is none. A year of two digits has a blank in place of
// a zero.
[[nodiscard]] std::string FormatDate(const IntlSettings& settings, const std::tm& time);

// Hours and minutes.
[[nodiscard]] std::string FormatTime(const IntlSettings& settings, const std::tm& time);

// The same of the local time at the moment of the call. On the window's thread.
[[nodiscard]] std::string FormatDateNow(const IntlSettings& settings);
[[nodiscard]] std::string FormatTimeNow(const IntlSettings& settings);
