#include "settings/colors.h"

#include "tests/scratch.h"

namespace {

constexpr COLORREF kUntouched = 0x123456;

void Spoil(COLORREF* table) {
  std::fill(table, table + kColorSlots, kUntouched);
}

TEST(ResetColors, TouchesTheSelectedSlotsOnly) {
  struct Case {
    int selector, first, end;
  };
  COLORREF table[kColorSlots];
  for (const auto& [selector, first, end] : {Case{COLORS_WINDOW, 0, 11}, Case{COLORS_PRINT, 11, 20},
                                             Case{TagBgnd, 3, 4}, Case{PrintBgnd, 19, 20}}) {
    Spoil(table);
    EXPECT_EQ(ResetColors(selector, table), 1);
    for (int slot = 0; slot < kColorSlots; ++slot)
      EXPECT_EQ(table[slot] != kUntouched, slot >= first && slot < end) << selector << " slot " << slot;
  }
  // The desktop's colors, where a slot has one.
  ResetColors(COLORS_WINDOW, table);
  EXPECT_EQ(table[WindowBgnd], GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(table[Background], GetSysColor(COLOR_APPWORKSPACE));
  EXPECT_EQ(table[MessageBgnd], RGB(255, 0, 0));
  EXPECT_EQ(table[CommentBgnd], RGB(0, 255, 0));
}

TEST(Colors, OnlyWhatDiffersFromTheDefaultIsSaved) {
  const ScratchFolder folder;
  const std::string file = folder.Path("p.ini");
  const char* const profile = file.c_str();
  ResetColors(COLORS_WINDOW, ColorTable);
  ResetColors(COLORS_PRINT, ColorTable);
  EXPECT_EQ(SaveWindowColors(profile, "C"), 1);
  EXPECT_EQ(SavePrintShades(profile, "C"), 1);
  EXPECT_FALSE(std::filesystem::exists(file));

  const COLORREF tagDefault = ColorTable[TagBgnd];
  ColorTable[CommentBgnd] = RGB(1, 2, 3);
  ColorTable[TagBgnd] = tagDefault ^ 1;
  ColorTable[PrintText] = 255;
  SavePrintShades(profile, "C");
  SaveWindowColors(profile, "C");
  EXPECT_EQ(ContentOf(file),
            "[C]\nPrintText=255\nTagBgnd=" + std::to_string(tagDefault ^ 1) + "\nCommentBgnd=197121\n");

  Spoil(ColorTable);
  EXPECT_EQ(LoadWindowColors(profile, "C"), 1);
  EXPECT_EQ(ColorTable[CommentBgnd], RGB(1, 2, 3));
  EXPECT_EQ(ColorTable[MessageBgnd], RGB(255, 0, 0)) << "absent: the default";
  EXPECT_EQ(ColorTable[PrintText], kUntouched);
  EXPECT_EQ(LoadPrintShades(profile, "C"), 1);
  EXPECT_EQ(ColorTable[PrintText], 255U);
  EXPECT_EQ(ColorTable[PrintBgnd], 0xE0E0E0U);

  ColorTable[TagBgnd] = tagDefault;
  SaveWindowColors(profile, "C");
  EXPECT_EQ(ContentOf(file), "[C]\nPrintText=255\nCommentBgnd=197121\n");
  folder.Write("p.ini", "[C]\nMessageBgnd=red\nMessageText=12 ; dark\n");
  LoadWindowColors(profile, "C");
  EXPECT_EQ(ColorTable[MessageBgnd], 0U);
  EXPECT_EQ(ColorTable[MessageText], 12U);
}

}  // namespace
