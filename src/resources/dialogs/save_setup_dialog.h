// The dialog that saves groups of options under a name. Its boxes have the ids of those in Save Options.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"
#include "resources/dialogs/save_options_dialog.h"

namespace save_setup_dialog {

inline constexpr int kName = 181;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "&Setup Name", 8, 7, 130, 10},
    {ControlKind::simpleCombo, kName, "", 8, 18, 130, 98},
    {ControlKind::group, kNoId, "Save &What", 146, 7, 92, 88, kGroupStart},
    {ControlKind::checkBox, save_options_dialog::kFormat, "Format", 154, 20, 78, 12, kGroupStart},
    {ControlKind::checkBox, save_options_dialog::kTitles, "Titles", 154, 34, 78, 12},
    {ControlKind::checkBox, save_options_dialog::kColors, "Colors", 154, 48, 78, 12},
    {ControlKind::checkBox, save_options_dialog::kPage, "Page Setup", 154, 62, 78, 12},
    {ControlKind::checkBox, save_options_dialog::kPrinter, "Print Setup", 154, 76, 78, 12},
    {ControlKind::defaultButton, IDOK, "Save", 246, 11, 54, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 246, 29, 54, 14},
};
inline constexpr DialogTemplate kTemplate = {"SaveSetup", "Save Setup As...", 308, 124, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace save_setup_dialog
