// The About box.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace about_dialog {

inline constexpr int kIcon = 100;
inline constexpr int kVersion = 101;
inline constexpr int kLibraries = 102;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::icon, kIcon, "quorl", 10, 12, 20, 20},
    {ControlKind::label, kNoId, "Quorl, the viewer for files of any size", 44, 12, 156, 10},
    {ControlKind::label, kVersion, "", 44, 26, 156, 10},
    {ControlKind::label, kLibraries, "", 44, 40, 156, 10},
    {ControlKind::defaultButton, IDOK, "OK", 80, 62, 50, 14},
};
inline constexpr DialogTemplate kTemplate = {"DialogAbout", "About Quorl", 210, 84, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace about_dialog
