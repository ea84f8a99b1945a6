#include "print/date_stamp.h"

#include <gtest/gtest.h>

#include "tests/made_locale.h"

namespace {

constexpr int kAugust = 7;

std::tm Time(int year, int hour, int minute) {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = kAugust;
  time.tm_mday = 8;
  time.tm_hour = hour;
  time.tm_min = minute;
  return time;
}

TEST(DateStamp, DatesGoByTheLooksOfThePicture) {
  const struct {
    const char* picture;
    int year;
    const char* date;
  } cases[] = {{"MM/dd/yy", 1995, "08/08/95"},
               {"dd.MM.yyyy", 1995, "08.08.1995"},
               {"d/M/yy", 1995, "8/8/95"},
               {"yy-MM-dd", 1995, "95-08-08"},
               {"dd.MM.yyy", 2026, "08.08.2026"},  // as a longer picture is when it was cut
               {"yyyy", 1995, "1995/8/8"},
               {"ddd", 1995, "08/8/95"},
               {"d-yy-M", 1995, "8/8/95"},
               {"yyyy\u5E74M\u6708d\u65E5", 1995, "1995\u67088\u67088"},
               {"", 1995, "8/8/95"},
               {"MM/dd/yy", 2005, "08/08/ 5"},
               {"yy/MM/dd", 2100, " 0/08/08"}};
  for (const auto& c : cases) {
    IntlSettings settings;
    settings.ShortDatePicture = c.picture;
    EXPECT_EQ(FormatDate(settings, Time(c.year, 0, 0)), c.date) << c.picture;
  }
}

TEST(DateStamp, TimesHaveTheClockOfTheSettings) {
  const struct {
    int hour24, hourZero, hour;
    const char* time;
  } cases[] = {{0, 1, 15, "03:20 PM"}, {0, 0, 15, "3:20 PM"},  {0, 1, 0, "12:20 AM"}, {0, 0, 11, "11:20 AM"},
               {0, 0, 12, "12:20 PM"}, {1, 1, 15, "15:20"},    {1, 0, 0, "0:20"},     {1, 1, 9, "09:20"},
               {7, 0, 23, "23:20"},    {0, -1, 13, "01:20 PM"}};
  for (const auto& c : cases) {
    IntlSettings settings;
    settings.Hour24 = c.hour24;
    settings.HourZero = c.hourZero;
    EXPECT_EQ(FormatTime(settings, Time(1995, c.hour, 20)), c.time);
  }
}

// The heading of a page in the locales of the system; the suffix of the Hindi one is longer than its field,
// the last one's character set is not UTF-8.
TEST(DateStamp, IsWrittenAsTheUsersLocaleDoes) {
  const std::pair<std::string, std::string> cases[] = {
      {"de_DE.UTF-8", "08.08.1995  15:04"},  {"en_US.UTF-8", "08/08/1995  03:04 PM"},
      {"en_GB.UTF-8", "08/08/95  15:04"},    {"ja_JP.UTF-8", "1995/08/08  15:04"},
      {"ar_SA.UTF-8", "8/08/1995  15:04"},   {"fa_IR.UTF-8", "95/08/08  15:04"},
      {"sv_SE.UTF-8", "1995-08-08  15:04"},  {"hi_IN.UTF-8", "8/8/95  03:04 \u0905\u092A\u0930\u093E"},
      {"ja_JP.EUC-JP", "1995/08/08  15:04"}, {"", "08/08/95  03:04 PM"},
      {"C.UTF-8", "08/08/95  03:04 PM"},     {"not_THERE.UTF-8", "08/08/95  03:04 PM"},
  };
  std::vector<std::string> names;
  for (std::size_t i = 0; i < 9; ++i)
    names.push_back(cases[i].first);
  const MadeLocales locales(names);
  for (const auto& [name, stamp] : cases) {
    if (!locales.Made() && !name.empty() && name.substr(0, 2) != "C.") continue;
    MadeLocales::Use(name);
    const IntlSettings settings = LoadIntlSettings();
    const std::tm time = Time(1995, 15, 4);
    EXPECT_EQ(FormatDate(settings, time) + "  " + FormatTime(settings, time), stamp) << name;
  }
  if (!locales.Made()) GTEST_SKIP() << "localedef, or the sources of the locales, are missing here";
  MadeLocales::Use("ja_JP.EUC-JP");
  EXPECT_EQ(LoadIntlSettings().PmText, "\u5348\u5F8C");
}

}  // namespace
