#include "platform/posix/intl.h"

#include <gtest/gtest.h>

#include "platform/win32.h"

namespace {

TEST(Intl, ADateBecomesAPictureWithOneSeparator) {
  const std::pair<const char*, const char*> cases[] = {{"%d.%m.%Y", "dd.MM.yyyy"},
                                                       {"%e.%-m.%y", "d.M.yy"},
                                                       {"%D", "MM/dd/yy"},
                                                       {"%F", "yyyy-MM-dd"},
                                                       {"%A, %e. %B %EY", "d.MM.yyyy"},
                                                       {"%Oy/%Om/%Od (%a)", "yy/MM/dd"},
                                                       {"%Y\u5E74%m\u6708%d\u65E5", "yyyy/MM/dd"},
                                                       {"%Y. %m. %d.", "yyyy.MM.dd"},
                                                       {"%d %d %b-%G", "dd/MM/yyyy"},
                                                       {"%d.%m.", ""},
                                                       {"%", ""},
                                                       {"", ""}};
  for (const auto& [format, picture] : cases)
    EXPECT_EQ(DatePictureOf(format), picture) << format;
}

TEST(Intl, ATimeTellsItsHoursAndSeparator) {
  const struct {
    const char *format, *withSuffix;
    std::string form;  // hours of the clock, digits of the least hour, separator
  } cases[] = {{"%T", "", "24 2 :"},       {"%k.%M.%S", "", "24 1 ."}, {"%r", "%I:%M:%S %p", "12 2 :"},
               {"%r", "", "12 2 :"},       {"%r", "%r", "12 2 :"},     {"%p %l\u6642%M\u5206", "", "12 1 :"},
               {"%-H h %M", "", "24 1 :"}, {"%OH-%OM", "", "24 2 -"},  {"%M:%S", "", "none"}};
  for (const auto& c : cases) {
    const auto form = ClockFormOf(c.format, c.withSuffix);
    const std::string text = !form ? "none"
                                   : std::string(form->hour24 ? "24 " : "12 ") +
                                         (form->leadingZero ? "2 " : "1 ") + form->separator;
    EXPECT_EQ(text, c.form) << c.format;
  }
}

TEST(Intl, WhatNoLocaleSaysIsTheDefault) {
  setenv("LC_ALL", "no_SUCH.UTF-8", 1);
  char text[4] = "...";
  EXPECT_EQ(GetProfileStringA("INTL", "sDecimal", "12345", text, sizeof text), 3U);
  EXPECT_STREQ(text, "123");
  EXPECT_EQ(GetProfileIntA("intl", "iMeasure", -1), 0xFFFFFFFFU);
  EXPECT_EQ(GetProfileIntA("other", "iMeasure", 7), 7U);
  unsetenv("LC_ALL");
}

}  // namespace
