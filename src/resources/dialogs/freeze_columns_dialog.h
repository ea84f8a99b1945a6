// The dialog that asks how many columns stay in place, with a line of the file above a ruler.
#pragma once

#include "platform/dialog.h"

inline constexpr int kFreezeRuler = 231;
inline constexpr int kFreezeSample = 232;
inline constexpr int kFreezeCount = 233;
inline constexpr int kFreezeHelp = 195;

inline constexpr ControlTemplate kFreezeControls[] = {
    {ControlKind::label, kNoId, "How many columns would you like to &freeze:", 8, 10, 160, 10},
    {ControlKind::edit, kFreezeCount, "", 172, 8, 40, 14},
    {ControlKind::label, kNoId, "This is an example line from your current file and a scale:", 8, 32, 300,
     10},
    {ControlKind::readOnlyEdit, kFreezeSample, "", 8, 44, 344, 14},
    {ControlKind::readOnlyEdit, kFreezeRuler, "", 8, 60, 344, 14},
    {ControlKind::defaultButton, IDOK, "OK", 92, 84, 54, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 153, 84, 54, 14},
    {ControlKind::button, kFreezeHelp, "&Help", 214, 84, 54, 14},
};
inline constexpr DialogTemplate kFreezeColumnsDialog = {"FreezeColumns", "Freeze Columns", 360, 106,
                                                        kFreezeControls};
