// The Save Options dialog: a box of three states for each group of options.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace save_options_dialog {

inline constexpr int kFormat = 241;
inline constexpr int kTitles = 242;
inline constexpr int kPage = 243;
inline constexpr int kPrinter = 244;
inline constexpr int kColors = 245;
inline constexpr int kHelp = 195;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId,
     "Check the kinds of options you want to save. Uncheck those you want to reset to default. Make gray "
     "those "
     "you want to keep unchanged.",
     10, 8, 190, 36},
    {ControlKind::threeState, kFormat, "Format", 20, 50, 90, 12, kGroupStart},
    {ControlKind::threeState, kTitles, "Titles", 20, 64, 90, 12},
    {ControlKind::threeState, kColors, "Colors", 20, 78, 90, 12},
    {ControlKind::threeState, kPage, "Page Setup", 20, 92, 90, 12},
    {ControlKind::threeState, kPrinter, "Print Setup", 20, 106, 90, 12},
    {ControlKind::defaultButton, IDOK, "Save", 140, 50, 60, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 140, 68, 60, 14},
    {ControlKind::button, kHelp, "&Help", 140, 104, 60, 14},
};
inline constexpr DialogTemplate kTemplate = {"SaveOptions", "Save Options", 210, 128, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace save_options_dialog
