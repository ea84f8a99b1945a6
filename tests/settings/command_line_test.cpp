#include "settings/command_line.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "settings/option_letters.h"

namespace {

std::string Letters(const CommandLineWords& line) {
  std::string letters;
  for (const char letter : line.OptionLetters)
    if (letter != '\0') letters += letter;
  return letters;
}

TEST(CommandLine, TextIsSplitIntoWords) {
  struct Case {
    std::string text, letters, setup, file;
  };
  const Case cases[] = {{"", "", "", "*.*"},
                        {"  -WB  report.txt  other.txt ", "BW", "", "report.txt"},
                        {"-w -W", "W", "", "*.*"},
                        {"a.txt -h", "h", "", "a.txt"},
                        {"-h-r/t", "hrt", "", "*.*"},
                        {"- a", "", "", "a"},
                        {"-1?x", "x", "", "*.*"},
                        {"-Vmy/set other.txt", "V", "Setup: my", "other.txt"},
                        {"-vone -vtwo", "v", "Setup: two", "*.*"},
                        {"-V", "V", "Setup: ", "*.*"},
                        {"-v" + std::string(56, 'n'), "v", "Setup: " + std::string(56, 'n'), "*.*"},
                        {"-v" + std::string(57, 'n'), "v", "", "*.*"},
                        {"a\tb", "", "", "a"},
                        {"\x01\x02-h\x03", "h", "", "*.*"},
                        {std::string("-h\0-x", 5), "hx", "", "*.*"}};
  for (const Case& c : cases) {
    const auto line = std::make_unique<CommandLineWords>();
    ParseCommandLine(c.text, *line);
    FinishCommandLine(*line);
    EXPECT_EQ(Letters(*line), c.letters) << c.text;
    EXPECT_STREQ(line->SetupSection, c.setup.c_str()) << c.text;
    EXPECT_STREQ(line->CommandFile, c.file.c_str()) << c.text;
    EXPECT_EQ(line->RefusedSetup.empty(), c.text.size() != 59) << c.text;
  }
}

TEST(CommandLine, AWordOfTheSystemMayHoldAnyByte) {
  const std::string tooLong(2 * kPathBytes, 'y');
  struct Case {
    std::vector<std::string> words;
    std::string letters, file;
  };
  // A slash begins an option only where it cannot begin a path.
  const Case cases[] = {{{"my file.txt", "-h"}, "h", "my file.txt"},
                        {{"\x80\xFF \x01"}, "", "\x80\xFF \x01"},
                        {{tooLong}, "", tooLong.substr(0, kPathBytes - 1)},
                        {{"-vmy set", "x"}, "v", "x"},
                        {{"/h", "x"}, kSlashBeginsOption ? "h" : "", kSlashBeginsOption ? "x" : "/h"}};
  for (const Case& c : cases) {
    const auto line = std::make_unique<CommandLineWords>();
    for (const std::string& word : c.words)
      TakeCommandWord(word, *line);
    FinishCommandLine(*line);
    EXPECT_EQ(Letters(*line), c.letters);
    EXPECT_EQ(line->CommandFile, c.file);
  }
}

TEST(CommandLine, OptionsWithNames) {
  const struct {
    std::vector<std::string> words;
    const char* told;  // letters | file | place | key, * before bytes | fault
  } cases[] = {
      {{"--hex", "-w", "a"}, "Hw|a|||"},
      {{"--at", "50%", "--find", "--raw", "a"}, "|a|50%|--raw|"},
      {{"--at=-4k", "a", "--find-hex=0A"}, "|a|-4k|*0A|"},
      {{"+/a b", "a", "+x"}, "|a||a b|"},
      {{"--", "-h", "--at"}, "|-h|||"},
      {{"-"}, "|-|||"},
      {{"-", "a"}, "|a|||"},
      {{"--", "-", "file:///a"}, "|-|||"},
      {{"file:///tmp/a%20b%C3%BC%zz"}, "|/tmp/a b\xC3\xBC%zz|||"},
      {{"file://localhost/a"}, "|/a|||"},
      {{"file://other/a"}, "|file://other/a|||"},
      {{"--nosuch", "a"}, "|a|||there is no option --nosuch"},
      {{"--hex=1"}, "|*.*|||there is no option --hex=1"},
      {{"a", "--at"}, "|a|||the last option needs a value"},
  };
  for (const auto& c : cases) {
    const auto line = std::make_unique<CommandLineWords>();
    for (const std::string& word : c.words)
      TakeCommandWord(word, *line);
    FinishCommandLine(*line);
    EXPECT_EQ(Letters(*line) + "|" + line->CommandFile + "|" + line->AskedPlace + "|" +
                  (line->KeyIsHex ? "*" : "") + line->AskedKey + "|" + line->CommandFault,
              c.told);
  }
}

TEST(ApplyOptionLetters, WorksInAFixedOrder) {
  struct Case {
    const char* words;
    std::int32_t format;
    ViewOptions flags;  // from a word of 0x220
    std::int32_t code, lists, escape;
  };
  const Case cases[] = {{"", 0, 0x220, 3, 1, 0},
                        {"-W -B -L -O", 0, 0x23B, 3, 1, 0},
                        {"-w -b -e -l -o", 0, 0x200, 3, 1, 0},
                        {"-w -W", 0, 0x221, 3, 1, 0},
                        {"-R -H -T", 2, 0x01, 3, 1, 0},
                        {"-a", 0, 0x260, 1, 1, 0},
                        {"-C -A", 0, 0x2A0, 2, 1, 0},
                        {"-U -A", 0, 0x220, 4, 1, 0},
                        {"-F -G -I -J -K -P -Q -Z", 0, 0x220, 3, 1, 0},
                        {"-s", 0, 0x220, 3, 0, 0},
                        {"-Y -s", 0, 0x220, 3, 0, 1}};
  for (const Case& c : cases) {
    const auto line = std::make_unique<CommandLineWords>();
    ParseCommandLine(c.words, *line);
    FormatOptions options;
    LoadFormat("/no profile", "Quorl", options);
    AdvancedKeys keys;
    ApplyOptionLetters(*line, options, keys);
    EXPECT_EQ(options.FormatIndex, c.format) << c.words;
    EXPECT_EQ(options.FormatFlags, c.flags) << c.words;
    EXPECT_EQ(options.CharCode, c.code) << c.words;
    EXPECT_EQ(keys.MruFiles, c.lists) << c.words;
    EXPECT_EQ(keys.MruSearch, c.lists) << c.words;
    EXPECT_EQ(options.EscExit, c.escape) << c.words;
  }
}

}  // namespace
