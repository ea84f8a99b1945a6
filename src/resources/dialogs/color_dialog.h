// The Color Selection dialog: a list of the window colors, and a small picture of the view whose parts are
// buttons.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace color_dialog {

inline constexpr int kList = 150;
inline constexpr int kChange = 151;
inline constexpr int kReset = 152;
inline constexpr int kResetAll = 153;
inline constexpr int kHelp = 154;
inline constexpr int kFirstSample = 160;
inline constexpr int kLastSample = 171;

// Samples stand in the order of their rows; those of the last row share it.
inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "C&olor of:", 8, 10, 40, 10},
    {ControlKind::dropDownList, kList, "", 50, 8, 132, 140},
    {ControlKind::ownerDrawn, 160, "", 8, 30, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 164, "", 8, 40, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 165, "", 8, 50, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 161, "", 8, 60, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 166, "", 8, 70, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 167, "", 8, 80, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 162, "", 8, 90, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 168, "", 8, 100, 162, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 169, "", 8, 110, 81, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 163, "", 89, 110, 81, 10, kNoTabStop},
    {ControlKind::ownerDrawn, 170, "", 170, 30, 12, 90, kNoTabStop},
    {ControlKind::ownerDrawn, 171, "", 8, 120, 174, 12, kNoTabStop},
    {ControlKind::defaultButton, IDOK, "OK", 192, 8, 60, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 192, 26, 60, 14},
    {ControlKind::button, kChange, "&Change", 192, 50, 60, 14},
    {ControlKind::button, kReset, "&Reset", 192, 68, 60, 14},
    {ControlKind::button, kResetAll, "Reset &All", 192, 86, 60, 14},
    {ControlKind::button, kHelp, "&Help", 192, 114, 60, 14},
};
inline constexpr DialogTemplate kTemplate = {"FormatColors", "Color Selection", 260, 140, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace color_dialog
