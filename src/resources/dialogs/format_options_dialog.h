// The Display Formatting dialog: how a file is shown.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace format_options_dialog {

inline constexpr int kFormat = 101;
inline constexpr int kLineLength = 102;
inline constexpr int kTabLength = 103;
inline constexpr int kCode = 104;
inline constexpr int kWrap = 111;
inline constexpr int kBackground = 113;
inline constexpr int kFixedLength = 114;
inline constexpr int kExpandTabs = 115;
inline constexpr int kHorizontal = 141;
inline constexpr int kVertical = 142;
inline constexpr int kSavePos = 143;
inline constexpr int kEscExit = 144;
inline constexpr int kSave = 191;
inline constexpr int kFont = 192;
inline constexpr int kColors = 193;
inline constexpr int kHelp = 195;
inline constexpr int kFontInUse = 196;
inline constexpr int kProfile = 499;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "&Format", 8, 10, 40, 10},
    {ControlKind::dropDownList, kFormat, "", 52, 8, 84, 60},
    {ControlKind::checkBox, kWrap, "&Wrap text", 14, 27, 122, 12, kGroupStart},
    {ControlKind::checkBox, kBackground, "Show &background", 14, 41, 122, 12},
    {ControlKind::checkBox, kExpandTabs, "&Expand tabs", 14, 55, 122, 12},
    {ControlKind::checkBox, kFixedLength, "Fixed &line length", 14, 69, 122, 12},
    {ControlKind::label, kNoId, "&Code", 8, 90, 40, 10, kGroupStart},
    {ControlKind::dropDownList, kCode, "", 52, 88, 84, 60},
    {ControlKind::label, kNoId, "L&ine length", 8, 108, 60, 10},
    {ControlKind::edit, kLineLength, "", 96, 106, 40, 13},
    {ControlKind::label, kNoId, "&Tab length", 8, 125, 60, 10},
    {ControlKind::edit, kTabLength, "", 96, 123, 40, 13},
    {ControlKind::group, kNoId, "Scroll bars", 144, 6, 100, 45},
    {ControlKind::threeState, kVertical, "&Vertical", 152, 18, 86, 12, kGroupStart},
    {ControlKind::threeState, kHorizontal, "Hori&zontal", 152, 33, 86, 12},
    {ControlKind::checkBox, kSavePos, "Save Window &Pos", 148, 84, 96, 12, kGroupStart},
    {ControlKind::checkBox, kEscExit, "E&xit on ESCape", 148, 98, 96, 12},
    {ControlKind::label, kNoId, "A gray box: the bar comes and goes as it is needed.", 148, 55, 100, 24},
    {ControlKind::defaultButton, IDOK, "OK", 254, 8, 54, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 254, 26, 54, 14},
    {ControlKind::button, kSave, "&Save", 254, 50, 54, 14},
    {ControlKind::button, kFont, "Fo&nt...", 254, 68, 54, 14},
    {ControlKind::button, kColors, "Colo&r...", 254, 86, 54, 14},
    {ControlKind::button, kHelp, "&Help", 254, 122, 54, 14},
    {ControlKind::label, kFontInUse, "", 8, 144, 300, 10},
    {ControlKind::label, kProfile, "", 8, 157, 300, 10},
};
inline constexpr DialogTemplate kTemplate = {"FORMATOPTIONS", "Display Formatting", 316, 172, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace format_options_dialog
