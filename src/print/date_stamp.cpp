#include "print/date_stamp.h"

#include <string_view>

#include "platform/win32.h"

namespace {

constexpr const char* kSection = "intl";
constexpr std::size_t kSettingBytes = 256;
constexpr int kFirstYear = 1900;
constexpr int kNoon = 12;
constexpr std::string_view kSlash = "/";

// As many characters of UTF-8 text as there are, `most` at the most.
std::string_view FirstCharacters(std::string_view text, std::size_t most) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    const bool begins = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
    if (begins && most-- == 0) break;
  }
  return text.substr(0, end);
}

std::string Setting(const char* key, const std::string& absent, std::size_t characters) {
  char text[kSettingBytes];
  const DWORD length = GetProfileStringA(kSection, key, absent.c_str(), text, sizeof text);
  return std::string(FirstCharacters({text, length}, characters));
}

std::int32_t Setting(const char* key, std::int32_t absent) {
  return static_cast<std::int32_t>(GetProfileIntA(kSection, key, absent));
}

std::string Padded(int number, std::size_t width, char with) {
  std::string text = std::to_string(number);
  if (text.size() < width) text.insert(0, width - text.size(), with);
  return text;
}

// Whether the first `letter` of the picture begins a run of at least `times` of them.
bool StandsTimes(std::string_view picture, char letter, std::size_t times) {
  const std::size_t first = picture.find(letter);
  return first != std::string_view::npos && picture.substr(first).starts_with(std::string(times, letter));
}

std::string_view DateSeparator(std::string_view picture) {
  const std::size_t month = picture.rfind('M');
  if (month == std::string_view::npos || month + 1 == picture.size()) return kSlash;
  return FirstCharacters(picture.substr(month + 1), 1);
}

std::tm Now() {
  const std::time_t now = std::time(nullptr);
  const std::tm* const local = std::localtime(&now);
  return local != nullptr ? *local : std::tm{};
}

}  // namespace

IntlSettings LoadIntlSettings() {
  const IntlSettings absent;
  IntlSettings settings;
  settings.Hour24 = Setting("iTime", absent.Hour24);
  settings.HourZero = Setting("iTLzero", absent.HourZero);
  settings.TimeSeparator = Setting("sTime", absent.TimeSeparator, 1);
  settings.AmText = Setting("s1159", absent.AmText, kSuffixCharacters);
  settings.PmText = Setting("s2359", absent.PmText, kSuffixCharacters);
  settings.ShortDatePicture = Setting("sShortDate", absent.ShortDatePicture, kPictureCharacters);
  return settings;
}

std::string FormatDate(const IntlSettings& settings, const std::tm& time) {
  const std::string& picture = settings.ShortDatePicture;
  const bool longYear = StandsTimes(picture, 'y', 3);
  const std::string day = Padded(time.tm_mday, StandsTimes(picture, 'd', 2) ? 2 : 1, '0');
  const std::string month = Padded(time.tm_mon + 1, StandsTimes(picture, 'M', 2) ? 2 : 1, '0');
  const std::string year =
      longYear ? Padded(kFirstYear + time.tm_year, 4, ' ') : Padded(time.tm_year % 100, 2, ' ');
  const std::string separator(DateSeparator(picture));
  const char first = picture.empty() ? 'M' : picture.front();
  if (first == 'd') return day + separator + month + separator + year;
  if (first == 'y') return year + separator + month + separator + day;
  return month + separator + day + separator + year;
}

std::string FormatTime(const IntlSettings& settings, const std::tm& time) {
  const bool suffix = settings.Hour24 == 0;
  int hour = time.tm_hour;
  if (suffix) hour = hour % kNoon == 0 ? kNoon : hour % kNoon;
  std::string text = Padded(hour, settings.HourZero != 0 ? 2 : 1, '0');
  text += settings.TimeSeparator + Padded(time.tm_min, 2, '0');
  if (suffix) text += ' ' + (time.tm_hour < kNoon ? settings.AmText : settings.PmText);
  return text;
}

std::string FormatDateNow(const IntlSettings& settings) {
  return FormatDate(settings, Now());
}

std::string FormatTimeNow(const IntlSettings& settings) {
  return FormatTime(settings, Now());
}
