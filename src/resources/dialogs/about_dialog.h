// The About box.
#pragma once

#include "platform/dialog.h"

inline constexpr int kAboutIcon = 100;
inline constexpr int kAboutVersion = 101;

inline constexpr ControlTemplate kAboutControls[] = {
    {ControlKind::icon, kAboutIcon, "quorl", 10, 12, 20, 20},
    {ControlKind::label, kNoId, "Quorl for Windows NT", 44, 12, 156, 10},
    {ControlKind::label, kAboutVersion, "", 44, 26, 156, 10},
    {ControlKind::defaultButton, IDOK, "OK", 80, 48, 50, 14},
};
inline constexpr DialogTemplate kAboutDialog = {"DialogAbout", "About Quorl", 210, 70, kAboutControls};
