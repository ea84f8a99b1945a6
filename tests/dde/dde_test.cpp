#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "dde/dde_verbs.h"

namespace {

using Tokens = std::vector<std::string>;

// The same grammar in another way: tokens of a command by a list of states; the position, or a negative
// number.
int Model(const std::string& text, std::size_t at, Tokens& tokens) {
  const auto white = [&](std::size_t i) {
    return i < text.size() && std::strchr(" \t\n\v\f\r", text[i]) != nullptr;
  };
  tokens.clear();
  while (white(at))
    ++at;
  if (at == text.size()) return 0;
  if (text[at++] != '[') return kDdeNoBracket;
  for (;;) {
    while (white(at))
      ++at;
    if (at >= text.size() || text[at] == ']') break;
    if (tokens.size() == kDdeTokens) return kDdeTooManyTokens;
    std::string token;
    if (text[at] == '"') {
      for (++at; at < text.size(); ++at) {
        if (text[at] == '"' && (at + 1 >= text.size() || text[at + 1] != '"')) break;
        if (text[at] == '"') ++at;
        token += text[at];
      }
      if (at < text.size()) ++at;
    } else {
      while (at < text.size() && !white(at) && text[at] != ']')
        token += text[at++];
    }
    tokens.push_back(token);
  }
  return static_cast<int>(at) + 1;
}

void ExpectAsModel(const std::string& text) {
  const auto length = static_cast<int>(text.size());
  for (int at = 0; at <= length;) {
    Tokens expected;
    const int next = Model(text, static_cast<std::size_t>(at), expected);
    DdeTokens tokens;
    ASSERT_EQ(ParseDdeCommand(text.data(), length, at, tokens), next) << text;
    if (next <= 0) break;
    expected.resize(kDdeTokens);
    for (std::size_t i = 0; i < kDdeTokens; ++i)
      ASSERT_EQ(tokens.slots[i], expected[i]) << text;
    at = next;
  }
}

TEST(DdeCommand, AgreesWithAPlainModel) {
  for (const char* text : {"", " \t ", "[]", "[a b c d e f]", "[a b c d e f g]", "x", "[a] x", "[a",
                           "[\"a b\"\"c\"]", "[\"\" x]", "[\"", "[a\"b [c,d(e)]",
                           "[ Open  \"D:\\A B\\c.txt\" ] [Display Hex]", "[Find \"say \"\"hi\"\"\" Case]"}) {
    ExpectAsModel(text);
  }
  std::mt19937 chance(5);
  for (int turn = 0; turn < 20000; ++turn) {
    std::string text;
    for (std::size_t length = chance() % (turn % 20 == 0 ? 257 : 24); text.size() < length;)
      text += "[[[]]]\"\"\"ab  \t\n"[chance() % 15];
    ExpectAsModel(text);
  }
  DdeTokens tokens;
  EXPECT_EQ(ParseDdeCommand("[a]", -1, 0, tokens), kDdeBadLength);
  EXPECT_EQ(ParseDdeCommand("[a]", 3, -1, tokens), kDdeBadStart);
  EXPECT_EQ(ParseDdeCommand("[a]", 3, 4, tokens), kDdeStartBehindEnd);
  const std::string longest = "[" + std::string(kDdeCommandBytes - 1, 'x');
  EXPECT_EQ(ParseDdeCommand(longest.data(), kDdeCommandBytes, 0, tokens), kDdeCommandBytes + 1);
  EXPECT_STREQ(tokens.slots[0], longest.c_str() + 1);
}

// Writes down what it is told.
class Recorder : public DdeHost {
 public:
  [[nodiscard]] bool IsBusy() const override { return busy; }
  void Open(const char* path) override { told += std::string("open ") + path + ";"; }
  void Close() override { told += "close;"; }
  void Send(std::string_view command) override { told += "send " + std::string(command) + ";"; }
  void Post(std::string_view command, bool forOthers) override {
    told += "post " + std::string(command) + (forOthers ? "+1;" : ";");
  }
  void Show(int how) override { told += "show " + std::to_string(how) + ";"; }
  SearchState& Search() override { return search; }
  [[nodiscard]] ViewOptions FileCode() const override { return code; }
  bool SetSetup(std::string_view section) override {
    told += "setup " + std::string(section) + ";";
    return section.size() < 64;
  }

  bool busy = false;
  std::string told;
  SearchState search;
  ViewOptions code = 0;
};

TEST(DdeVerbs, DoWhatTheyAreFor) {
  const struct {
    const char *text, *told, *key;
    DdeAnswer answer = DdeAnswer::accepted;
    int flags = 0;
  } cases[] = {
      {"[Open \"D:\\A B\\c.txt\"][Display Hex]", "open D:\\A B\\c.txt;send hex;", ""},
      {"  ", "", ""},
      {"[]", "", "", DdeAnswer::notProcessed},
      {"[Print]", "post print-file+1;", ""},
      {"[PRINT page][print TAGS][Print Foo][close x]", "post print-page;post print-tags-now;post close+1;",
       ""},
      {"[a b c d e f g]", "", "", DdeAnswer::notProcessed},
      {"[Open][Open \"\"][Display][Window x]", "", ""},
      {"[window minimize][Window Maximize][window RESTORE][Window OnTop]",
       "show 6;show 3;show 1;send on-top;", ""},
      {"[display text][display raw][display wrap][display zoomin][display zoomout][display zoomreset]",
       "send text;send raw;send wrap;send zoom-in;send zoom-out;send zoom-reset;", ""},
      {"[Find abc Top Case All]", "post find-mark-all;", "abc", DdeAnswer::accepted,
       SEARCH_TEXT | SEARCH_CASE | SEARCH_FROM_TOP},
      {"[Find \"say \"\"hi\"\"\" Case]", "post find-next;", "say \"hi\"", DdeAnswer::accepted,
       SEARCH_TEXT | SEARCH_CASE},
      {"[Find 4A4B Hex]", "post find-next;", "JK", DdeAnswer::accepted, SEARCH_TEXT},
      {"[Find ZZ Hex][Find][Find \xC3\xBC]", "post find-next;", "\xFC", DdeAnswer::accepted, SEARCH_TEXT},
      {"[Setup \"Setup: My own\"]", "setup Setup: My own;post reload-setup;", ""},
      {"[Exit][DDE][Display Hex]", "close;post ignore-dde;send hex;", ""},
      {"[Display Hex][Unknown][Display Text]", "send hex;", "", DdeAnswer::notProcessed},
      {"[Display Hex", "send hex;", "", DdeAnswer::notProcessed},
  };
  for (const auto& c : cases) {
    Recorder host;
    EXPECT_EQ(RunDdeString(c.text, host), c.answer) << c.text;
    EXPECT_EQ(host.told, c.told) << c.text;
    const auto length = static_cast<std::size_t>(std::max(host.search.SearchKeyLen, 0));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(host.search.SearchKey), length), c.key) << c.text;
    if (c.flags != 0) EXPECT_EQ(host.search.SearchFlags, c.flags) << c.text;
  }
  Recorder host;
  host.code = VO_UTF16LE;
  EXPECT_EQ(RunDdeString("[Find \u0416]", host), DdeAnswer::accepted);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(host.search.SearchKey), 2), "\x16\x04")
      << "in the file's code";
  EXPECT_EQ(host.search.SearchFlags, SEARCH_TEXT | VO_UTF16LE);
  EXPECT_EQ(RunDdeString("[Find 4A4B Hex]", host), DdeAnswer::accepted);
  EXPECT_EQ(host.search.SearchFlags, SEARCH_TEXT) << "bytes";
  host.told = "";
  host.busy = true;
  EXPECT_EQ(RunDdeString("[Window Restore][Display Hex]", host), DdeAnswer::busy);
  EXPECT_EQ(host.told, "") << "all or nothing";
  EXPECT_EQ(RunDdeString("[Window Restore][Print Foo]", host), DdeAnswer::accepted);
  EXPECT_EQ(RunDdeString("[Window Restore]" + std::string(300, ' '), host), DdeAnswer::notProcessed);
}

}  // namespace
