// The dialog that loads, or removes, a named setup.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace load_setup_dialog {

inline constexpr int kNames = 182;
inline constexpr int kRemove = 183;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "&Setup Name", 8, 7, 150, 10},
    {ControlKind::listBox, kNames, "", 8, 18, 150, 90, kGroupStart},
    {ControlKind::defaultButton, IDOK, "OK", 166, 18, 60, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 166, 36, 60, 14},
    {ControlKind::button, kRemove, "&Remove...", 166, 94, 60, 14},
};
inline constexpr DialogTemplate kTemplate = {"LoadSetup", "Load Setup...", 234, 116, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace load_setup_dialog
