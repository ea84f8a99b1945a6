// The Print Shade Selection dialog: text and background of each kind of printed line, as numbers.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace print_shades_dialog {

inline constexpr int kNormalText = 211;
inline constexpr int kTagText = 212;
inline constexpr int kHeadText = 213;
inline constexpr int kCommentText = 214;
inline constexpr int kNormalBgnd = 215;
inline constexpr int kTagBgnd = 216;
inline constexpr int kHeadBgnd = 217;
inline constexpr int kCommentBgnd = 218;
inline constexpr int kSave = 191;
inline constexpr int kHelp = 195;
inline constexpr int kResetAll = 196;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "Text", 68, 8, 34, 10},
    {ControlKind::label, kNoId, "Bgnd", 108, 8, 34, 10},
    {ControlKind::label, kNoId, "&Normal line", 8, 22, 56, 10},
    {ControlKind::edit, kNormalText, "", 68, 20, 32, 13},
    {ControlKind::edit, kNormalBgnd, "", 108, 20, 32, 13},
    {ControlKind::label, kNoId, "&Tagged line", 8, 38, 56, 10},
    {ControlKind::edit, kTagText, "", 68, 36, 32, 13},
    {ControlKind::edit, kTagBgnd, "", 108, 36, 32, 13},
    {ControlKind::label, kNoId, "H&eading", 8, 54, 56, 10},
    {ControlKind::edit, kHeadText, "", 68, 52, 32, 13},
    {ControlKind::edit, kHeadBgnd, "", 108, 52, 32, 13},
    {ControlKind::label, kNoId, "C&omment", 8, 70, 56, 10},
    {ControlKind::edit, kCommentText, "", 68, 68, 32, 13},
    {ControlKind::edit, kCommentBgnd, "", 108, 68, 32, 13},
    {ControlKind::label, kNoId, "Type in numbers between", 8, 90, 132, 10},
    {ControlKind::label, kNoId, "0 (white) and 8 (black).", 8, 101, 132, 10},
    {ControlKind::defaultButton, IDOK, "OK", 152, 8, 54, 14, kGroupStart},
    {ControlKind::button, IDCANCEL, "Cancel", 152, 26, 54, 14},
    {ControlKind::button, kSave, "&Save", 152, 50, 54, 14},
    {ControlKind::button, kResetAll, "&Reset All", 152, 68, 54, 14},
    {ControlKind::button, kHelp, "&Help", 152, 96, 54, 14},
};
inline constexpr DialogTemplate kTemplate = {"FORMATSHADES", "Print Shade Selection", 214, 118, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace print_shades_dialog
