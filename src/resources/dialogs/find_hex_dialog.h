// The dialog that asks for bytes to search for, as hexadecimal digits.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace find_hex_dialog {

inline constexpr int kError = 114;  // a single blank when there is none
inline constexpr int kKey = 106;    // the history drops down from it
inline constexpr int kText = 104;   // what the digits spell
inline constexpr int kFromTop = 112;
inline constexpr int kMarkAll = 131;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kError, " ", 52, 6, 136, 8},
    {ControlKind::label, kNoId, "Fi&nd What", 7, 20, 42, 8},
    {ControlKind::comboBox, kKey, "", 52, 18, 136, 13},
    {ControlKind::label, kNoId, "Text", 7, 39, 42, 8},
    {ControlKind::edit, kText, "", 52, 37, 136, 13, kDisabled},
    {ControlKind::checkBox, kFromTop, "Start from &Top", 52, 57, 136, 10},
    {ControlKind::defaultButton, IDOK, "Find", 197, 17, 54, 14},
    {ControlKind::button, kMarkAll, "&Mark All", 197, 34, 54, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 197, 51, 54, 14},
};

inline constexpr DialogTemplate kTemplate{"FindHexOptions", "Find Hex", 258, 75, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace find_hex_dialog
