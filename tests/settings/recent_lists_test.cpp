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
      {"case counts", {"a", "b", "", ""}, -1, "A", {"A", "a", "b", ""}},
      {"by index", {"a", "b", "c", "d"}, 2, "xxx", {"c", "a", "b", "d"}},
      {"too long is cut", {"a", "", "", ""}, -1, "1234567", {"12345", "a", "", ""}},
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
  EXPECT_EQ(recent->RecentFileCount, 3);
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
  const std::vector<std::string> paths = {"/" + std::string(kPathBytes - 2, 'x'), "'/quoted'",
                                          " /caf\xC3\xA9 [1];x=\r", "/a\nFile4=/b"};
  for (const std::string& path :
       {std::string("/a"), std::string("/b"), paths[3], paths[2], paths[1], paths[0]})
    TouchRecentFile(*recent, path.c_str());
  EXPECT_EQ(recent->RecentFileCount, 4);
  EXPECT_EQ(SaveRecentFiles(*place, 1, *recent), 1);
  const auto loaded = std::make_unique<RecentFileList>();
  LoadRecentFiles(place->ProfilePath, 1, *loaded);
  ASSERT_EQ(loaded->RecentFileCount, 3) << "all but the one with a line feed";
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_EQ(loaded->RecentFiles[i], paths[i]);
}

TEST(RecentSearches, AListThatWasNotReadIsNotWritten) {
  const ScratchFolder folder;
  const auto place = PlaceOf(
      folder.Write("p.ini", "[MRU Search]\nTexts=25\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n"));
  RecentSearchLists recent;
  const auto load = [&](const char* kind) {
    return LoadRecentStrings(place->ProfilePath, "MRU Search", kind, recent.RecentTexts[0], kRecentStrings,
                             kRecentTextBytes);
  };
  ASSERT_EQ(load("Text"), 10);
  EXPECT_STREQ(recent.RecentTexts[0], "");
  EXPECT_STREQ(recent.RecentTexts[9], "ten");
  recent.RecentTextCount = 1;
  std::snprintf(recent.RecentTexts[0], kRecentTextBytes, "%s", " 32 characters with blanks here ");
  EXPECT_EQ(SaveRecentSearches(*place, 0, recent), 0);
  EXPECT_EQ(SaveRecentSearches(*place, 1, recent), 1);
  EXPECT_EQ(ContentOf(place->ProfilePath),
            "[MRU Search]\nTexts=1\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n"
            "Text1=\" 32 characters with blanks here \"\n");
  EXPECT_EQ(load("Text"), 1);
  EXPECT_STREQ(recent.RecentTexts[0], " 32 characters with blanks here ");
  recent.RecentTextCount = 0;
  EXPECT_EQ(SaveRecentSearches(*place, 1, recent), 1);
  EXPECT_EQ(load("Text"), 0) << "an empty list is one, too";
}

}  // namespace
