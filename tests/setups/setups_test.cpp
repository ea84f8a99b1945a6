#include "setups/setups.h"

#include <cstdio>
#include <memory>

#include "engine/text_format.h"
#include "settings/colors.h"
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

}  // namespace
