// The Page Setup dialog: what stands on a printed page, and its margins.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace page_setup_dialog {

inline constexpr int kFileName = 121;
inline constexpr int kFullPath = 122;
inline constexpr int kDateTime = 123;
inline constexpr int kPageNumber = 124;
inline constexpr int kEjectOnFormFeeds = 125;
inline constexpr int kPageTitles = 126;
inline constexpr int kShadeTags = 127;
inline constexpr int kShadeSelection = 128;
inline constexpr int kMargins = 130;  // its text names the unit
inline constexpr int kTop = 131;
inline constexpr int kLeft = 132;
inline constexpr int kRight = 133;
inline constexpr int kBottom = 134;
inline constexpr int kSave = 191;
inline constexpr int kShades = 194;
inline constexpr int kHelp = 195;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::group, kNoId, "Heading", 7, 6, 118, 70},
    {ControlKind::checkBox, kFileName, "Include file na&me", 14, 17, 106, 12, kGroupStart},
    {ControlKind::checkBox, kFullPath, "Include f&ull path", 14, 31, 106, 12},
    {ControlKind::checkBox, kDateTime, "Include &date && time", 14, 45, 106, 12},
    {ControlKind::checkBox, kPageNumber, "Include page numb&er", 14, 59, 106, 12},
    {ControlKind::group, kNoId, "Options", 7, 82, 118, 42},
    {ControlKind::checkBox, kEjectOnFormFeeds, "Eject on &form feeds", 14, 93, 106, 12, kGroupStart},
    {ControlKind::checkBox, kPageTitles, "&Print page titles", 14, 107, 106, 12},
    {ControlKind::group, kMargins, "Margins", 133, 6, 90, 70, kGroupStart},
    {ControlKind::label, kNoId, "&Top", 140, 18, 34, 10},
    {ControlKind::edit, kTop, "", 178, 17, 38, 12},
    {ControlKind::label, kNoId, "&Left", 140, 32, 34, 10},
    {ControlKind::edit, kLeft, "", 178, 31, 38, 12},
    {ControlKind::label, kNoId, "&Right", 140, 46, 34, 10},
    {ControlKind::edit, kRight, "", 178, 45, 38, 12},
    {ControlKind::label, kNoId, "&Bottom", 140, 60, 34, 10},
    {ControlKind::edit, kBottom, "", 178, 59, 38, 12},
    {ControlKind::group, kNoId, "Shadi&ng", 133, 82, 90, 42},
    {ControlKind::checkBox, kShadeTags, "Tags/Titles", 140, 93, 78, 12, kGroupStart},
    {ControlKind::checkBox, kShadeSelection, "Selection", 140, 107, 78, 12},
    {ControlKind::defaultButton, IDOK, "OK", 231, 8, 54, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 231, 26, 54, 14},
    {ControlKind::button, kSave, "&Save", 231, 50, 54, 14},
    {ControlKind::button, kShades, "Sh&ades", 231, 68, 54, 14},
    {ControlKind::button, kHelp, "&Help", 231, 110, 54, 14},
};
inline constexpr DialogTemplate kTemplate = {"PAGESETUP", "Page Setup", 292, 131, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace page_setup_dialog
