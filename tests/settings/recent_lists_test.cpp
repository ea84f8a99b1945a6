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
    std::int32_t touched;  // of one before
  };
  const Case cases[] = {
      {"first entry", {}, -1, "a", {"a", "", "", ""}, 2},
      {"the front one stays", {"a", "b", "", ""}, -1, "a", {"a", "b", "", ""}, 1},
      {"a new one pushes the oldest out", {"a", "b", "c", "d"}, -1, "e", {"e", "a", "b", "c"}, 2},
      {"one that is there moves", {"a", "b", "c", "d"}, -1, "c", {"c", "a", "b", "d"}, 2},
      {"case counts", {"a", "b", "", ""}, -1, "A", {"A", "a", "b", ""}, 2},
      {"by index", {"a", "b", "c", "d"}, 2, "xxx", {"c", "a", "b", "d"}, 2},
      {"too long is cut", {"a", "", "", ""}, -1, "1234567", {"12345", "a", "", ""}, 2},
  };
  for (const Case& c : cases) {
    char slots[kCapacity][kWidth] = {};
    for (std::size_t i = 0; i < c.before.size(); ++i)
      std::snprintf(slots[i], kWidth, "%s", c.before[i]);
    char text[16];
    std::snprintf(text, sizeof text, "%s", c.text.c_str());
    std::int32_t touched = 1;
    const std::size_t length = TouchRecentList(slots[0], kCapacity, kWidth, c.index, text, touched);
    EXPECT_EQ(touched, c.touched) << c.what;
    EXPECT_EQ((std::vector<std::string>{slots[0], slots[1], slots[2], slots[3]}), c.after) << c.what;
    EXPECT_EQ(length, c.after[0].size()) << c.what;
    EXPECT_EQ(text, c.after[0]) << c.what;
  }
}

class RecentFiles : public testing::Test {
 protected:
  // A viewer that has read the profile and shown these files.
  std::unique_ptr<RecentFileList> ViewerOf(const std::vector<std::string>& paths) {
    auto recent = std::make_unique<RecentFileList>();
    LoadRecentFiles(file.c_str(), 1, *recent);
    for (const std::string& path : paths)
      TouchRecentFile(*recent, path.c_str());
    return recent;
  }
  [[nodiscard]] std::vector<std::string> Stored() const {
    const auto recent = std::make_unique<RecentFileList>();
    LoadRecentFiles(file.c_str(), 1, *recent);
    return {recent->RecentFiles, recent->RecentFiles + recent->RecentFileCount};
  }
  ScratchFolder folder;
  std::string file = folder.Path("p.ini");
};
using Paths = std::vector<std::string>;

TEST_F(RecentFiles, GapsCloseAndOldKeysStay) {
  const std::string content = "[MRU Files]\nFile1=/one\nFile2=\nFile3=/three\nfile4=\"/four \"\n";
  folder.Write("p.ini", content);
  EXPECT_EQ(Stored(), (Paths{"/one", "/three", "/four "}));
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *ViewerOf({})), 0);
  EXPECT_EQ(ContentOf(file), content) << "no file was shown";
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *ViewerOf({"/three"})), 0);
  EXPECT_EQ(ContentOf(file), "[MRU Files]\nFile1=/three\nFile2=/one\nFile3=\"/four \"\nfile4=\"/four \"\n");
  EXPECT_EQ(Stored(), (Paths{"/three", "/one", "/four "})) << "none stands twice";
}

TEST_F(RecentFiles, FourAreKeptAndAnyPathComesBackAsItWas) {
  const Paths paths = {"/" + std::string(kPathBytes - 2, 'x'), "'/quoted'", " /caf\xC3\xA9 [1];x=\r",
                       "/a\nFile4=/b"};
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *ViewerOf({"/a", "/b", paths[3], paths[2], paths[1], paths[0]})),
            0);
  EXPECT_EQ(Stored(), (Paths{paths[0], paths[1], paths[2]})) << "all but the one with a line feed";
}

TEST_F(RecentFiles, TwoViewersKeepEachOthers) {
  folder.Write("p.ini", "[MRU Files]\nFile1=/a\nFile2=/b\n");
  const auto one = ViewerOf({"/one", "/b"});
  const auto two = ViewerOf({"/two", "/b"});
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *two), 0);
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *one), 0);
  EXPECT_EQ(Stored(), (Paths{"/b", "/one", "/two", "/a"}));
  const auto again = ViewerOf({"/b"});
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *ViewerOf({"/new"})), 0);
  EXPECT_EQ(SaveRecentFiles(file.c_str(), *again), 0);
  EXPECT_EQ(Stored().front(), "/b") << "shown once more, although it was the first";
}

TEST(RecentSearches, AreMergedWithWhatTheProfileHolds) {
  const ScratchFolder folder;
  const std::string content = "[MRU Search]\nTexts=25\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n";
  const std::string file = folder.Write("p.ini", content);
  const auto recent = std::make_unique<RecentSearchLists>();
  const auto load = [&] {
    return LoadRecentStrings(file.c_str(), "MRU Search", "Text", recent->RecentTexts[0], kRecentStrings,
                             kRecentTextBytes);
  };
  ASSERT_EQ(load(), 10);
  EXPECT_STREQ(recent->RecentTexts[0], "");
  EXPECT_STREQ(recent->RecentTexts[9], "ten");
  EXPECT_EQ(SaveRecentSearches(file.c_str(), *recent), 0);
  EXPECT_EQ(ContentOf(file), content) << "nothing was searched for";
  for (std::string text : {std::string("line\nfeed"), " " + std::string(kRecentTextBytes - 3, 'x') + " "}) {
    text.resize(kRecentTextBytes);
    TouchRecentList(recent->RecentTexts[0], kRecentStrings, kRecentTextBytes, -1, text.data(),
                    recent->RecentTextsTouched);
  }
  const std::string longest = recent->RecentTexts[0];
  EXPECT_EQ(SaveRecentSearches(file.c_str(), *recent), 0);
  EXPECT_EQ(ContentOf(file),
            "[MRU Search]\nTexts=3\nText2=two\nText10=ten\nHexs=2\nHex1=41\nHex2=42\n"
            "Text1=\"" +
                longest + "\"\nText3=ten\n");
  EXPECT_EQ(load(), 3);
  EXPECT_EQ(recent->RecentTexts[0], longest);
}

}  // namespace
