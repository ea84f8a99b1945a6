// The dialog that asks for a place in the file to go to.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace goto_dialog {

inline constexpr int kTop = 191;
inline constexpr int kBottom = 192;
inline constexpr int kBytePosition = 193;
inline constexpr int kPageNumber = 194;
inline constexpr int kNumber = 195;
inline constexpr int kRange = 196;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::radio, kTop, "&Top of the file", 7, 7, 110, 10, kGroupStart},
    {ControlKind::radio, kBottom, "B&ottom of the file", 7, 21, 110, 10},
    {ControlKind::radio, kBytePosition, "File &byte position", 7, 35, 110, 10},
    {ControlKind::radio, kPageNumber, "File &page number", 7, 49, 110, 10},
    {ControlKind::edit, kNumber, "", 7, 65, 110, 13, kGroupStart},
    {ControlKind::label, kRange, " ", 7, 82, 110, 8},
    {ControlKind::defaultButton, IDOK, "OK", 126, 7, 54, 14},
    {ControlKind::button, IDCANCEL, "Cancel", 126, 24, 54, 14},
};

inline constexpr DialogTemplate kTemplate{"GoToDlg", "Go To", 187, 97, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace goto_dialog
