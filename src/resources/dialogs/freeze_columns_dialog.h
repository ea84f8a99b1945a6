// The dialog that asks how many columns stay in place, with a line of the file above a ruler.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace freeze_columns_dialog {

inline constexpr int kRuler = 231;
inline constexpr int kSample = 232;
inline constexpr int kCount = 233;
inline constexpr int kHelp = 195;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "How many columns would you like to &freeze:", 8, 10, 160, 10},
    {ControlKind::edit, kCount, "", 172, 8, 40, 14},
    {ControlKind::label, kNoId, "This is an example line from your current file and a scale:", 8, 32, 300,
     10},
    {ControlKind::readOnlyEdit, kSample, "", 8, 44, 344, 14},
    {ControlKind::readOnlyEdit, kRuler, "", 8, 60, 344, 14},
    {ControlKind::defaultButton, IDOK, "OK", 92, 84, 54, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 153, 84, 54, 14},
    {ControlKind::button, kHelp, "&Help", 214, 84, 54, 14},
};
inline constexpr DialogTemplate kTemplate = {"FreezeColumns", "Freeze Columns", 360, 106, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace freeze_columns_dialog
