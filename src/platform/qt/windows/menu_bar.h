// The bar of a window, made from its menu. Each pull-down is filled anew whenever it opens, so that the menu
// alone holds the state.
#pragma once

#include <QMenuBar>

#include "platform/win32.h"

namespace platform_qt {

void FillMenuBar(QMenuBar& bar, HWND window, HMENU menu);

}  // namespace platform_qt
