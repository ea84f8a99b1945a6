#include "platform/posix/profile_text.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

std::string Read(std::string_view text, std::string_view section, std::string_view key) {
  const std::size_t body = FindSectionInText(text, section);
  if (body == std::string_view::npos) return "(no section)";
  return std::string(FindKeyInText(text, body, key).value_or("(no key)"));
}

TEST(ProfileText, Reads) {
  const struct {
    const char* text;
    const char* value;  // of the key "Key" in the section "Sec"
  } cases[] = {{"[Sec]\nKey=1", "1"},
               {"\xEF\xBB\xBF[sEC]\r\nkEY=1\r\n", "1"},
               {"  [ Sec ] \n \t Key \t=  a b \t \n", "a b"},
               {"[Sec] ; a comment with [brackets]\nKey=1\n", "1"},
               {"[Sec]\nKey=a=b;c\n", "a=b;c"},
               {"[Sec]\nKey=\" a \"\n", " a "},
               {"[Sec]\nKey=\"a'\n", "\"a'"},
               {"[Sec]\n;Key=1\n#Key=2\n ; Key=3\nKey 4\nKeys=5\nKey=6\nKey=7\n", "6"},
               {"Key=0\n[Other]\nKey=1\n[Sec]\n[Sec]\nKey=2\n", "(no key)"},
               {"[Sec\nKey=1\n", "(no section)"},
               {"[Sec]\nOther=1\n[Third]\nKey=1\n", "(no key)"},
               {"[Secret]\nKey=0\n[Sec]y]\nKey=1\n[Sec]\nKey=2\n", "2"}};
  for (const auto& it : cases)
    EXPECT_EQ(Read(it.text, "Sec", "Key"), it.value) << it.text;
}

TEST(ProfileText, EditsTouchNothingElse) {
  const char* const kNone = nullptr;
  const struct {
    const char* before;
    const char* key;    // null: delete the section "Sec"
    const char* value;  // null: delete the key
    const char* after;  // null: as before
  } cases[] = {
      // A value that changes.
      {"; c\n [sec] ; d\n\n  kEy \t=  1 \t\n; e\n", "Key", "2", "; c\n [sec] ; d\n\n  kEy \t=  2 \t\n; e\n"},
      {"[Sec]\nKey='1'", "Key", "2", "[Sec]\nKey=2"},
      {"[Sec]\nKey=1\nKey=2\n", "Key", "3", "[Sec]\nKey=3\nKey=2\n"},
      {"[Sec]\nKey=1\n", "Key", " 2", "[Sec]\nKey=\" 2\"\n"},
      // A value that stands there already.
      {"[Sec]\nKey = \"1\" \n", "Key", "1", kNone},
      // A new key: behind the last key, before the blank lines and comments that follow.
      {"[Sec]\nA=1\n\n; of B\n[B]\n", "Key", "2", "[Sec]\nA=1\nKey=2\n\n; of B\n[B]\n"},
      {"[Sec]\r\nA=1", "Key", "2", "[Sec]\r\nA=1\r\nKey=2\r\n"},
      {"[Sec]\n; c\n[Sec]\nKey=1\n", "Key", "2", "[Sec]\nKey=2\n; c\n[Sec]\nKey=1\n"},
      // A new section.
      {"\xEF\xBB\xBF", "Key", "2", "\xEF\xBB\xBF[Sec]\nKey=2\n"},
      {"[A]\r\nx=1", "Key", "2", "[A]\r\nx=1\r\n\r\n[Sec]\r\nKey=2\r\n"},
      {"[A]\nx=1\n\n", "Key", "2", "[A]\nx=1\n\n[Sec]\nKey=2\n"},
      // A key that goes.
      {"[Sec]\nA=1\n; c\n Key = 1\n\nB=2\n", "Key", kNone, "[Sec]\nA=1\n; c\n\nB=2\n"},
      {"[Sec]\nKey=1\nA=1\nkey=2", "Key", kNone, "[Sec]\nA=1\n"},
      // A section that goes, and what belongs to the next one.
      {"a\n[Sec]\n; c\nx\nKey=1\n\n[B]\nKey=1\n", kNone, kNone, "a\n[B]\nKey=1\n"},
      {"\xEF\xBB\xBF[Sec]\n; of B\n# too\n[B]\n[sec]\nKey=2", kNone, kNone,
       "\xEF\xBB\xBF; of B\n# too\n[B]\n"},
      {"[B]\nSec=1\n", kNone, kNone, kNone},
  };
  for (const auto& it : cases) {
    std::string text = it.before;
    const bool changed = it.key == nullptr     ? DeleteSectionInText(text, "Sec")
                         : it.value == nullptr ? DeleteKeyInText(text, "Sec", it.key)
                                               : SetKeyInText(text, "Sec", it.key, it.value);
    EXPECT_EQ(text, it.after == nullptr ? it.before : it.after);
    EXPECT_EQ(changed, it.after != nullptr) << it.before;
  }
}

// For texts of any kind and edits of any kind: what was written is read, what was deleted is gone, and every
// other key of every other section reads as before.
TEST(ProfileText, RandomEditsActOnTheirKeyAlone) {
  const std::vector<std::string> sections = {"A", "B", "Setup: a[1]"};
  const std::vector<std::string> keys = {"Key", "Keys", "x"};
  const std::vector<std::string> values = {"", "1", " 2 ", "\"3\"", "'", "a=b", "[A]", "; c", "\xE9\x01\r"};
  const std::vector<std::string> lines = {"[A]",      "[ b ]",  "[Setup: A[1]]",
                                          "[C] ; [x", "; c",    "# [A]",
                                          "Key=1",    "key=2",  " KEYS = ' 3'",
                                          "x=",       "=5",     "[",
                                          "]",        "",       "  ",
                                          "x",        "x = \r", "y=[A]",
                                          "\x01\xFF"};
  std::mt19937 random(20260801);
  const auto pick = [&random](const auto& from) { return from[random() % from.size()]; };
  for (int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) {
    std::string text;
    const char* const lineBreak = random() % 2 == 0 ? "\n" : "\r\n";
    for (std::size_t count = random() % 12; count > 0; --count)
      text += pick(lines) + (count > 1 || random() % 2 == 0 ? lineBreak : "");
    const std::string before = text;
    const std::string section = pick(sections);
    const std::string key = pick(keys);
    const std::string value = pick(values);
    const auto kind = random() % 4;
    if (kind == 0) DeleteSectionInText(text, section);
    if (kind == 1) DeleteKeyInText(text, section, key);
    if (kind > 1) SetKeyInText(text, section, key, value);
    for (const std::string& other : sections) {
      for (const std::string& asked : keys) {
        std::string expected = Read(before, other, asked);
        if (other == section) {
          if (kind == 0) expected = "(no section)";
          if (kind > 0 && asked == key && expected != "(no section)") expected = "(no key)";
          if (kind > 1 && expected == "(no section)") expected = "(no key)";
          if (kind > 1 && asked == key) expected = value;
        }
        EXPECT_EQ(Read(text, other, asked), expected)
            << "kind " << kind << " on " << section << "/" << key << " asked " << other << "/" << asked
            << testing::PrintToString(before) << " became " << testing::PrintToString(text);
      }
    }
  }
}

}  // namespace
