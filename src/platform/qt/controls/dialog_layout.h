// Where the controls of a dialog stand.
#pragma once

#include <deque>

#include "platform/qt/controls/controls.h"

namespace platform_qt {

// Places the controls, and fixes the size of the dialog: dialog units in the dialog's font, and larger ones
// where the desktop's widgets would cut a text.
void LayOut(QWidget& dialog, const std::deque<Control>& controls, const DialogTemplate& description);

}  // namespace platform_qt
