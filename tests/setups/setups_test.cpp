#include "setups/setups.h"

#include <cstdio>
#include <memory>
#include <random>
#include <set>
#include <sstream>

#include "engine/text_format.h"
#include "settings/colors.h"
#include "setups/profile_keys.h"
#include "setups/setup_list.h"
#include "tests/scratch.h"

namespace {

constexpr const char* kProfile =
    "[Quorl]\nFormat=1\nLineLength=80\nWindowPos=10,20,300,400\n"
    "[Quorl Colors]\nTagText=11\nPrintTag=12\n"
    "[MRU Files]\nFile1=/a\n"
    "[Page Setup]\nPageMargins=7\n[Print Setup]\nPrtCopies=2\n"
    "[Setup: Format]\nSaveOptions=3\nFormat=2\nWindowPos=1,1,1,1\nTagText=21\n"
    "[Setup: Colors]\nSaveOptions=256\nFormat=2\nTagText=31\nPrintTag=32\n"
    "[Setup: Print]\nSaveOptions=12\nPageMargins=8\nPrtCopies=3\n"
    "[Setup: All]\nFormat=2\nPrintOptions=1\nWindowPos=1,2,3,4\nTagText=41\nPrintTag=42\n";

TEST(Setups, LoadTheirGroupsAndNoOthers) {
  const ScratchFolder folder;
  const std::string file = folder.Write("p.ini", kProfile);
  COLORREF defaults[kColorSlots] = {};
  ResetColors(COLORS_WINDOW, defaults);
  ResetColors(COLORS_PRINT, defaults);
  const auto settings = std::make_unique<Settings>();
  std::snprintf(settings->ProfilePath, sizeof settings->ProfilePath, "%s", file.c_str());
  using Result = std::vector<std::int64_t>;
  const auto result = [&settings] {
    return Result{settings->FormatIndex,
                  settings->LineLength,
                  settings->WindowX,
                  settings->RecentFileCount,
                  ColorTable[TagText],
                  ColorTable[PrintTag],
                  settings->SaveWhat,
                  settings->MarginTop,
                  settings->PrinterMode ? settings->PrinterMode->dmCopies : -1};
  };
  LoadDefaults(*settings);
  EXPECT_EQ(result(), (Result{1, 80, 20, 1, 11, 12, 0, 7, 2}));
  LoadSetup("setup: format", nullptr, *settings);
  EXPECT_EQ(result(), (Result{2, 127, 20, 1, 11, 12, 3, 7, 2}))
      << "the length is absent and takes its default";
  settings->RecentFileCount = 0;
  settings->LineLength = 99;
  LoadSetup("Setup: Colors", nullptr, *settings);
  EXPECT_EQ(result(), (Result{2, 99, 20, 0, 31, 12, 256, 7, 2}));
  LoadSetup("Setup: Print", nullptr, *settings);
  EXPECT_EQ(result(), (Result{2, 99, 20, 0, 31, 12, 12, 8, 3}));
  LoadSetup("Setup: All", nullptr, *settings);
  EXPECT_EQ(result(), (Result{2, 127, 2, 1, 41, 42, -1, 8, -1}));
  settings->MruFiles = 0;
  LoadSetup("Setup: unknown", nullptr, *settings);
  EXPECT_EQ(result(), (Result{0, 127, CW_USEDEFAULT, 0, defaults[TagText], defaults[PrintTag], -1, 8, -1}));
}

// Options as chance has them, within what a load gives.
void Shuffle(std::mt19937& chance, Settings& settings, TitleSet& titles) {
  const auto number = [&chance](std::int64_t least, std::int64_t most) {
    return static_cast<std::int32_t>(std::uniform_int_distribution<std::int64_t>(least, most)(chance));
  };
  for (ViewOptions& word : settings.StoredFlags)
    word = static_cast<ViewOptions>(number(0, 0xFFFF));
  settings.StoredFlags[kFormatText] |= VO_FORMFEED;
  for (const FormatNumber& field : FormatNumbers())
    field.set(settings, number(field.least, field.most));
  ApplyCharCode(settings);
  settings.SavePos = number(0, 1);
  std::snprintf(settings.FontFace, sizeof settings.FontFace, "Face %d", number(0, 9999));
  settings.FontPoints = number(kLeastPoints, kMostPoints);
  settings.PrintOptions = static_cast<std::uint32_t>(number(0, kStoredPrintOptions));
  for (std::int32_t PageSetup::*margin :
       {&PageSetup::MarginTop, &PageSetup::MarginLeft, &PageSetup::MarginRight, &PageSetup::MarginBottom})
    settings.*margin = number(0, kMostMargin);
  settings.PrinterMode.reset();
  settings.PrinterNames.reset();
  if (number(0, 1) != 0) {
    settings.PrinterMode = DEVMODEA{};
    settings.PrinterMode->dmFields = DM_COPIES | DM_ORIENTATION;
    settings.PrinterMode->dmCopies = static_cast<short>(number(1, 99));
    settings.PrinterMode->dmOrientation = static_cast<short>(number(1, 2));
    settings.PrinterNames = MakePrinterNames("driver", "device", "output");
  }
  for (COLORREF& color : ColorTable) {
    if (number(0, 1) != 0) color = static_cast<COLORREF>(number(0, kMostColor));
  }
  ASSERT_EQ(LockTitles(titles, true), 1);
  for (int i = number(0, 15); i > 0; --i) {
    CellText text;
    for (int length = number(0, 20); length > 0; --length)
      text += CellOf(static_cast<std::uint8_t>(number('A', 'Z')));
    ASSERT_TRUE(AppendTitle(titles, FilePos::At(i), text));
  }
  EndTitles(titles, FilePos::At(titles.Lines.Alast));
}

std::string Without(const std::string& text, const std::string& section) {
  std::string rest;
  bool within = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    const std::string line = text.substr(at, end - at);
    if (line[0] == '[') within = line == "[" + section + "]\n";
    if (!within) rest += line;
    at = end;
  }
  return rest;
}

TEST(Setups, SavedLoadedAndSavedAgainAreTheSame) {
  const ScratchFolder folder;
  const std::string text =
      "[Setup: n3]\n; what this is\nFormat=1\nForeign=2\n\n; by hand\n[Quorl]\nForeign=1\n; "
      "more\nLineLength=33\n\n[Other "
      "Program]\nKey=value\n[Titles]\nTitles=0\n";
  constexpr std::int32_t kGroups[] = {GROUP_FORMAT,  GROUP_TITLES, GROUP_PAGE,
                                      GROUP_PRINTER, GROUP_COLORS, GROUP_SHADES};
  std::mt19937 chance(11);
  const auto one = std::make_unique<Settings>(), other = std::make_unique<Settings>();
  TitleSet titles, loaded;
  const RECT window = {1, 2, 301, 202};
  for (int turn = 0; turn < 60; ++turn) {
    const std::string file = folder.Write("p.ini", text);
    std::snprintf(one->ProfilePath, sizeof one->ProfilePath, "%s", file.c_str());
    std::snprintf(other->ProfilePath, sizeof other->ProfilePath, "%s", file.c_str());
    Shuffle(chance, *one, titles);
    const std::string section = "Setup: n" + std::to_string(chance() % 5);
    do {
      one->SaveWhat = 0;
      for (const std::int32_t group : kGroups)
        one->SaveWhat |= chance() % 2 != 0 ? group : 0;
    } while (one->SaveWhat == 0);
    ASSERT_EQ(WriteSetup(&window, section.c_str(), titles, *one), 0);
    const std::string saved = ContentOf(file);
    EXPECT_NE(saved.find("\n; what this is\n"), std::string::npos);
    EXPECT_EQ(Without(Without(saved, section), "Setup List"), Without(text, section) + "\n");
    // What the mask leaves out stays as it is in memory, and what it holds comes back.
    Shuffle(chance, *other, loaded);
    other->PrinterNames.reset();  // a load without a printer leaves the names of the former one
    const auto beforeLines = other->LineLength;
    const auto beforeMargin = other->MarginLeft;
    LoadSetup(section.c_str(), &loaded, *other);
    EXPECT_EQ(other->SaveWhat, one->SaveWhat);
    EXPECT_EQ(other->LineLength, (one->SaveWhat & GROUP_FORMAT) != 0 ? one->LineLength : beforeLines);
    EXPECT_EQ(other->MarginLeft, (one->SaveWhat & GROUP_PAGE) != 0 ? one->MarginLeft : beforeMargin);
    ASSERT_EQ(WriteSetup(&window, section.c_str(), loaded, *other), 0);
    EXPECT_EQ(ContentOf(file), saved) << "mask " << one->SaveWhat;
    ASSERT_EQ(SaveGroups({GROUP_FORMAT, 0}, &window, titles, *one), 0);
    EXPECT_NE(ContentOf(file).find("\n[Quorl]\nForeign=1\n; more\nLineLength="), std::string::npos);
  }
  FreeTitles(titles);
  FreeTitles(loaded);
}

// What people are told of the profile leaves no key out.
TEST(Setups, EveryKeyThatIsWrittenIsTold) {
  const ScratchFolder folder;
  const std::string file = folder.Write("p.ini", "");
  std::mt19937 chance(1);
  const auto settings = std::make_unique<Settings>();
  std::snprintf(settings->ProfilePath, sizeof settings->ProfilePath, "%s", file.c_str());
  TitleSet titles;
  do {
    Shuffle(chance, *settings, titles);
  } while (!settings->PrinterMode || titles.Lines.Alast == titles.Lines.Acur);
  for (COLORREF& color : ColorTable)
    color = 0x123456;
  settings->PrinterMode->dmFields = 0xFFFFFFFF;
  settings->SavePos = 1;
  const RECT window{};
  ASSERT_EQ(SaveGroups({GROUP_ALL, 0}, &window, titles, *settings), 0);
  settings->SaveWhat = GROUP_FORMAT;
  ASSERT_EQ(WriteSetup(&window, "Setup: NAME", titles, *settings), 0);
  TouchRecentFile(*settings, "/a");
  ASSERT_EQ(SaveRecentLists(*settings), 0);
  std::set<std::string> told;
  for (const ProfileKey& key : ProfileKeys()) {
    EXPECT_TRUE(told.insert(key.section + "/" + key.key).second) << key.key << " is told twice";
    if (key.section == "Quorl") told.insert("Setup: NAME/" + key.key);
  }
  std::istringstream lines(ContentOf(file));
  std::string section;
  int keys = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    if (line[0] == '[') {
      section = line.substr(1, line.size() - 2);
      continue;
    }
    std::string key = line.substr(0, line.find('='));
    if (section == "Titles" || section == "Setup List" || section == "MRU Files") {
      while (std::isdigit(key.back()) != 0)
        key.pop_back();
      if (key != "Titles") key += 'N';
    }
    EXPECT_EQ(told.count(section + "/" + key), 1U) << section << "/" << key;
    ++keys;
  }
  EXPECT_GT(keys, 70);
  FreeTitles(titles);
}

TEST(Setups, AreListedAndRemoved) {
  const ScratchFolder folder;
  const std::string file = folder.Write("p.ini",
                                        "[Setup List]\nSetup1=Zoo\nSetup2=\"ab \"\nSetup3=b\nSetup5=lost\n"
                                        "[Setup: b]\nFormat=1\n; of c\n[setup: C]\nFormat=2\n");
  const char* const profile = file.c_str();
  using Names = std::vector<std::string>;
  EXPECT_EQ(SortedSetupNames(profile), (Names{"ab ", "b", "Zoo"}));
  EXPECT_EQ(FindSetup(SortedSetupNames(profile), "Setup: A"), 0) << "the first that begins so";
  EXPECT_EQ(FindSetup(SortedSetupNames(profile), ""), -1);
  ListSetup(profile, "ZOO");
  ListSetup(profile, "c");
  EXPECT_EQ(SetupNames(profile), (Names{"Zoo", "ab ", "b", "c", "lost"}));
  EXPECT_EQ(RemoveSetup(profile, "B"), 0);
  EXPECT_EQ(SetupNames(profile), (Names{"Zoo", "ab ", "c", "lost"}));
  EXPECT_FALSE(SetupExists(profile, "Setup: b"));
  EXPECT_TRUE(SetupExists(profile, "Setup: c"));
  EXPECT_EQ(
      ContentOf(file),
      "[Setup List]\nSetup1=Zoo\nSetup2=\"ab \"\nSetup3=c\nSetup4=lost\n; of c\n[setup: C]\nFormat=2\n");
  EXPECT_TRUE(CheckSetupName(std::string(56, 'x')).accepted);
  EXPECT_TRUE(CheckSetupName("\xC3\x9C"
                             "bersicht  ")
                  .accepted);
  EXPECT_EQ(SetupSectionOf("a b  "), "Setup: a b");
  for (const std::string& name : {std::string(), std::string(" x"), std::string(57, 'x')})
    EXPECT_FALSE(CheckSetupName(name).accepted) << name;
}

}  // namespace
