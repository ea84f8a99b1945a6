#include "settings/title_group.h"

#include <gtest/gtest.h>

#include "tests/cell_text.h"
#include "tests/scratch.h"

namespace {

class TitleGroup : public testing::Test {
 protected:
  TitleGroup() { EXPECT_EQ(LockTitles(titles, true), 1); }
  ~TitleGroup() override { FreeTitles(titles); }

  void Set(const std::vector<std::string>& texts) {
    ResetTitles(titles);
    for (const std::string& text : texts)
      ASSERT_TRUE(AppendTitle(titles, 7, CellsOfBytes(text)));
    EndTitles(titles, 8);
  }
  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (int i = 0; i < titles.Lines.Alast; ++i) {
      texts.push_back(BytesOf(LineCells(titles.Lines.Aline[i], titles.Text)));
    }
    return texts;
  }
  ScratchFolder folder;
  std::string file = folder.Path("p.ini");
  TitleSet titles;
};

// All of a line comes back that a line of a profile can hold.
TEST_F(TitleGroup, ComesBackAsItWasSaved) {
  const std::string full(512, 'x');
  Set({"  Item   Price ", "", "\"quoted\"", "\xE4\x80 1252", full + "more", std::string("a\0b\r\nc", 6)});
  EXPECT_EQ(SaveTitles(file.c_str(), "Titles", &titles), 0);
  ResetTitles(titles);
  EXPECT_EQ(LoadTitles(file.c_str(), "Titles", titles), 1);
  EXPECT_EQ(Texts(),
            (std::vector<std::string>{"  Item   Price ", "", "\"quoted\"", "\xE4\x80 1252", full, "a b  c"}));
  for (int i = 0; i <= titles.Lines.Alast; ++i)
    EXPECT_EQ(titles.Lines.Aline[i].Lpos, FilePos::At(i)) << "line numbers, and their count in the end entry";
}

TEST_F(TitleGroup, KeepsWhatStandsInSeveralBytesOrColumns) {
  const std::string text = "\u6F22 Preis e\u0301\u0302 \U0001F600 \u0416|";
  const CellRow cells = CellsOfUtf8(text);
  for (int i = 0; i < 3; ++i)
    ASSERT_TRUE(AppendTitle(titles, 7, cells.View()));
  EndTitles(titles, 8);
  EXPECT_EQ(SaveTitles(file.c_str(), "Titles", &titles), 0);
  ResetTitles(titles);
  EXPECT_EQ(LoadTitles(file.c_str(), "Titles", titles), 1);
  ASSERT_EQ(titles.Lines.Alast, 3);
  for (int i = 0; i < 3; ++i) {
    const CellView row = LineCells(titles.Lines.Aline[i], titles.Text);
    EXPECT_EQ(row.size(), cells.cells.size());
    EXPECT_EQ(CellsToUtf8(row), text);
  }
}

TEST_F(TitleGroup, LeavesNoFormerKeysBehind) {
  folder.Write("p.ini", "[Titles]\nTitles=2000000000\nTitle2=b\nTitle3=c\nTitle5=e\nOther=o\n");
  Set({"one", "two"});
  EXPECT_EQ(SaveTitles(file.c_str(), "Titles", &titles), 0);
  EXPECT_EQ(ContentOf(file), "[Titles]\nTitles=2\nTitle2=two\nOther=o\nTitle1=one\n");
  EXPECT_EQ(SaveTitles(file.c_str(), "Titles", nullptr), 0);
  EXPECT_EQ(ContentOf(file), "[Titles]\nTitles=0\nOther=o\n");
}

TEST_F(TitleGroup, LoadsFifteenOfAnyNumber) {
  std::string profile = "[Setup: x]\nTitles=2147483647\n";
  for (int i = 1; i <= 20; ++i)
    profile += "Title" + std::to_string(i) + "=t" + std::to_string(i) + "\n";
  folder.Write("p.ini", profile);
  EXPECT_EQ(LoadTitles(file.c_str(), "Setup: x", titles), 1);
  EXPECT_EQ(LoadTitles(file.c_str(), "", titles), 0) << "without a section nothing changes";
  EXPECT_EQ(Texts().size(), 15U);
  EXPECT_EQ(Texts().back(), "t15");
}

}  // namespace
