// The Save Options dialog: a box of three states for each group of options. Printing has no groups yet, so
// that their boxes stay gray.
#pragma once

#include "platform/dialog.h"

inline constexpr int kSaveFormatBox = 241;
inline constexpr int kSaveTitlesBox = 242;
inline constexpr int kSavePageBox = 243;
inline constexpr int kSavePrinterBox = 244;
inline constexpr int kSaveColorsBox = 245;
inline constexpr int kSaveHelp = 195;

inline constexpr ControlTemplate kSaveOptionsControls[] = {
    {ControlKind::label, kNoId,
     "Check the kinds of options you want to save. Uncheck those you want to reset to default. Make gray "
     "those "
     "you want to keep unchanged.",
     10, 8, 190, 36},
    {ControlKind::threeState, kSaveFormatBox, "Format", 20, 50, 90, 12, kGroupStart},
    {ControlKind::threeState, kSaveTitlesBox, "Titles", 20, 64, 90, 12},
    {ControlKind::threeState, kSaveColorsBox, "Colors", 20, 78, 90, 12},
    {ControlKind::threeState, kSavePageBox, "Page Setup", 20, 92, 90, 12, kDisabled},
    {ControlKind::threeState, kSavePrinterBox, "Print Setup", 20, 106, 90, 12, kDisabled},
    {ControlKind::defaultButton, IDOK, "Save", 140, 50, 60, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 140, 68, 60, 14},
    {ControlKind::button, kSaveHelp, "&Help", 140, 104, 60, 14},
};
inline constexpr DialogTemplate kSaveOptionsDialog = {"SaveOptions", "Save Options", 210, 128,
                                                      kSaveOptionsControls};
