#include "settings/recent_lists.h"

#include <cstdio>
#include <memory>

#include "tests/scratch.h"

namespace {

constexpr int kCapacity = 4;
constexpr std::size_t kWidth = 6;

TEST(TouchRecentList, MovesAnEntryToTheFront) {
  struct Case {
    const char* what;
    std::vector<const char*> before;
    int index;
    std::string text;
    std::vector<std::string> after;
  };
  const Case cases[] = {
      {"first entry", {}, -1, "a", {"a", "", "", ""}},
      {"a new one pushes the oldest out", {"a", "b", "c", "d"}, -1, "e", {"e", "a", "b", "c"}},
      {"one that is there moves", {"a", "b", "c", "d"}, -1, "c", {"c", "a", "b", "d"}},
      {"the first stays", {"a", "b", "c", "d"}, -1, "a", {"a", "b", "c", "d"}},
      {"the last moves", {"a", "b", "c", "d"}, -1, "d", {"d", "a", "b", "c"}},
      {"case counts", {"a", "b", "", ""}, -1, "A", {"A", "a", "b", ""}},
      {"by index", {"a", "b", "c", "d"}, 2, "xxx", {"c", "a", "b", "d"}},
      {"too long is cut", {"a", "", "", ""}, -1, "1234567", {"12345", "a", "", ""}},
      {"too long, and there already", {"a", "12345", "", ""}, -1, "1234567", {"12345", "a", "", ""}},
  };
  for (const Case& c : cases) {
    char slots[kCapacity][kWidth] = {};
    for (std::size_t i = 0; i < c.before.size(); ++i)
      std::snprintf(slots[i], kWidth, "%s", c.before[i]);
    char text[16];
    std::snprintf(text, sizeof text, "%s", c.text.c_str());
    const std::size_t length = TouchRecentList(slots[0], kCapacity, kWidth, c.index, text);
    EXPECT_EQ((std::vector<std::string>{slots[0], slots[1], slots[2], slots[3]}), c.after) << c.what;
    EXPECT_EQ(length, c.after[0].size()) << c.what;
    EXPECT_EQ(text, c.after[0]) << c.what;
  }
}

std::unique_ptr<ProfilePlace> PlaceOf(const std::string& file) {
  auto place = std::make_unique<ProfilePlace>();
  std::snprintf(place->ProfilePath, sizeof place->ProfilePath, "%s", file.c_str());
  return place;
}

TEST(RecentFiles, GapsCloseAndOldKeysStay) {
  const ScratchFolder folder;
  const std::string content = "[MRU Files]\nFile1=/one\nFile2=\nFile3=/three\nfile4=\"/four \"\n";
  const auto place = PlaceOf(folder.Write("p.ini", content));
  const auto recent = std::make_unique<RecentFileList>();
  LoadRecentFiles(place->ProfilePath, 1, *recent);
  ASSERT_EQ(recent->RecentFileCount, 3);
  EXPECT_STREQ(recent->RecentFiles[1], "/three");
  EXPECT_STREQ(recent->RecentFiles[2], "/four ");

  EXPECT_EQ(SaveRecentFiles(*place, 0, *recent), 0);
  place->ProfileReadOnly = 1;
  EXPECT_EQ(SaveRecentFiles(*place, 1, *recent), 0);
  EXPECT_EQ(ContentOf(place->ProfilePath), content);
  place->ProfileReadOnly = 0;
  EXPECT_EQ(SaveRecentFiles(*place, 1, *recent), 1);
  EXPECT_EQ(ContentOf(place->ProfilePath),
            "[MRU Files]\nFile1=/one\nFile2=/three\nFile3=\"/four \"\nfile4=\"/four \"\n");

  LoadRecentFiles(place->ProfilePath, 0, *recent);
  EXPECT_EQ(recent->RecentFileCount, 0);
}

TEST(RecentFiles, FourAreKeptAndAnyPathComesBackAsItWas) {
  const ScratchFolder folder;
  const auto place = PlaceOf(folder.Path("p.ini"));
  const auto recent = std::make_unique<RecentFileList>();
  const std::vector<std::string> paths = {"/" + std::string(kPathBytes - 2, 'x'), "/a\nFile4=/b", "'/quoted'",
                                          " /caf\xC3\xA9 [1];x=\r"};
  for (const char* old : {"/a", "/b", "/a"})
    TouchRecentFile(*recent, old);
  EXPECT_EQ(recent->RecentFileCount, 2);
  for (auto path = paths.rbegin(); path != paths.rend(); ++path)
    TouchRecentFile(*recent, path->c_str());
  EXPECT_EQ(recent->RecentFileCount, 4);
  EXPECT_EQ(SaveRecentFiles(*place, 1, *recent), 1);
  EXPECT_EQ(ContentOf(place->ProfilePath).find("File4="), std::string::npos) << "numbers without a gap";
  const auto loaded = std::make_unique<RecentFileList>();
  LoadRecentFiles(place->ProfilePath, 1, *loaded);
  ASSERT_EQ(loaded->RecentFileCount, 3) << "all but the one with a line feed";
  EXPECT_EQ(loaded->RecentFiles[0], paths[0]);
  EXPECT_EQ(loaded->RecentFiles[1], paths[2]);
  EXPECT_EQ(loaded->RecentFiles[2], paths[3]);
}

TEST(RecentSearches, AListThatWasNotReadIsNotWritten) {
  const ScratchFolder folder;
  const auto place = PlaceOf(
      folder.Write("p.ini", "[MRU Search]\nTexts=25\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n"));
  RecentSearchLists recent;
  const int count = LoadRecentStrings(place->ProfilePath, "MRU Search", "Text", recent.RecentTexts[0],
                                      kRecentStrings, kRecentStringBytes);
  ASSERT_EQ(count, 10);
  EXPECT_STREQ(recent.RecentTexts[0], "");
  EXPECT_STREQ(recent.RecentTexts[1], "two");
  EXPECT_STREQ(recent.RecentTexts[9], "ten");
  recent.RecentTextCount = 1;
  std::snprintf(recent.RecentTexts[0], kRecentStringBytes, "%s", " 32 characters with blanks here ");
  EXPECT_EQ(SaveRecentSearches(*place, 0, recent), 0);
  EXPECT_EQ(SaveRecentSearches(*place, 1, recent), 1);
  EXPECT_EQ(ContentOf(place->ProfilePath),
            "[MRU Search]\nTexts=1\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n"
            "Text1=\" 32 characters with blanks here \"\n");
  LoadRecentStrings(place->ProfilePath, "MRU Search", "Text", recent.RecentTexts[1], 1, kRecentStringBytes);
  EXPECT_STREQ(recent.RecentTexts[1], " 32 characters with blanks here ");
  recent.RecentTextCount = 0;
  EXPECT_EQ(SaveRecentSearches(*place, 1, recent), 1);
  EXPECT_NE(ContentOf(place->ProfilePath).find("Texts=0\n"), std::string::npos)
      << "an empty list is one, too";
  folder.Write("p.ini", "[MRU Search]\nHexs=-3\n");
  EXPECT_EQ(LoadRecentStrings(place->ProfilePath, "MRU Search", "Hex", recent.RecentHex[0], kRecentStrings,
                              kRecentStringBytes),
            0);
}

}  // namespace
