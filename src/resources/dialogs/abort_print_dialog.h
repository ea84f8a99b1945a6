// The status dialog of a print job.
#pragma once

#include "platform/dialog.h"
#include "resources/dialogs/dialog_checks.h"

namespace abort_print_dialog {

inline constexpr int kDocument = 101;
inline constexpr int kPrinter = 102;
inline constexpr int kStatus = 103;

inline constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kDocument, "", 8, 10, 224, 10},
    {ControlKind::label, kPrinter, "", 8, 24, 224, 10},
    {ControlKind::label, kStatus, "Initializing...", 8, 38, 224, 10},
    {ControlKind::defaultButton, IDCANCEL, "Cancel", 95, 58, 50, 14},
};
inline constexpr DialogTemplate kTemplate = {"AbortPrintDlg", "Printing File", 240, 80, kControls};
static_assert(dialog_checks::IsSound(kTemplate));

}  // namespace abort_print_dialog
