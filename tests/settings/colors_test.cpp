#include "settings/colors.h"

#include "tests/scratch.h"

namespace {

constexpr COLORREF kUntouched = 0x123456;

TEST(Colors, OnlyWhatDiffersFromTheDefaultIsSaved) {
  const ScratchFolder folder;
  const std::string file = folder.Path("p.ini");
  const char* const profile = file.c_str();
  ResetColors(COLORS_WINDOW, ColorTable);
  ResetColors(COLORS_PRINT, ColorTable);
  EXPECT_EQ(SaveWindowColors(profile, "C"), 0);
  EXPECT_EQ(SavePrintShades(profile, "C"), 0);
  EXPECT_FALSE(std::filesystem::exists(file));

  const COLORREF tagDefault = ColorTable[TagBgnd];
  ColorTable[CommentBgnd] = RGB(1, 2, 3);
  ColorTable[TagBgnd] = tagDefault ^ 1;
  ColorTable[PrintText] = 255;
  EXPECT_EQ(SavePrintShades(profile, "C"), 0);
  EXPECT_EQ(SaveWindowColors(profile, "C"), 0);
  ColorTable[TagBgnd] = tagDefault;
  EXPECT_EQ(SaveWindowColors(profile, "C"), 0) << "which takes the former value away";
  EXPECT_EQ(ContentOf(file), "[C]\nPrintText=255\nCommentBgnd=197121\n");

  std::fill(ColorTable, ColorTable + kColorSlots, kUntouched);
  EXPECT_EQ(LoadWindowColors(profile, "C"), 1);
  EXPECT_EQ(ColorTable[CommentBgnd], RGB(1, 2, 3));
  EXPECT_EQ(ColorTable[MessageBgnd], RGB(255, 0, 0)) << "absent: the default";
  EXPECT_EQ(ColorTable[PrintText], kUntouched);
  EXPECT_EQ(LoadPrintShades(profile, "C"), 1);
  EXPECT_EQ(ColorTable[PrintText], 255U);
  EXPECT_EQ(ColorTable[PrintBgnd], 0xE0E0E0U);
}

}  // namespace
