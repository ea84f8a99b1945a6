// The dialog that asks for a text to search for.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace find_text_dialog {

inline constexpr int kKey = 105;  // the history drops down from it
inline constexpr int kCaseSensitive = 111;
inline constexpr int kFromTop = 112;
inline constexpr int kMarkAll = 131;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "Fi&nd What", 7, 9, 42, 8},
    {ControlKind::comboBox, kKey, "", 52, 7, 136, 13},
    {ControlKind::checkBox, kCaseSensitive, "&Case Sensitive", 52, 27, 136, 10},
    {ControlKind::checkBox, kFromTop, "Start from &Top", 52, 42, 136, 10},
    {ControlKind::defaultButton, IDOK, "Find", 197, 7, 54, 14},
    {ControlKind::button, kMarkAll, "&Mark All", 197, 24, 54, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 197, 41, 54, 14},
};

inline constexpr DialogTemplate kTemplate{"FindTextOptions", "Find Text", 258, 62, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace find_text_dialog
