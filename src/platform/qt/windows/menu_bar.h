// The bar of a window, made from its menu. Each pull-down is filled anew whenever it opens, so that the menu
// alone holds the state.
#pragma once

#include <QMenuBar>

#include "platform/win32.h"

namespace platform_qt {

// Tells its window when it has given the keys back.
class MenuBar : public QMenuBar {
 public:
  MenuBar(QWidget* parent, HWND window) : QMenuBar(parent), window_(window) {}

 protected:
  void focusOutEvent(QFocusEvent* event) override;

 private:
  HWND window_;
};

// What the record says becomes the toolkit's menu, with the menus within it.
void FillMenu(HWND window, HMENU popup, QMenu& menu);

void FillMenuBar(QMenuBar& bar, HWND window, HMENU menu);

}  // namespace platform_qt
