#include "platform/qt/windows/menu_bar.h"

#include <QAction>
#include <QMenu>
#include <cassert>

#include "platform/qt/windows/menu.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

void FillMenu(HWND window, HMENU popup, QMenu& menu) {
  for (const MenuEntry& entry : popup->entries) {
    if ((entry.flags & MF_SEPARATOR) != 0) {
      menu.addSeparator();
      continue;
    }
    if ((entry.flags & MF_POPUP) != 0) {
      FillMenu(window, entry.popup, *menu.addMenu(QString::fromStdString(entry.text)));
      continue;
    }
    QAction* const action = menu.addAction(QString::fromStdString(entry.text));
    action->setEnabled((entry.flags & MF_GRAYED) == 0);
    action->setCheckable((entry.flags & MF_CHECKED) != 0);
    action->setChecked((entry.flags & MF_CHECKED) != 0);
    action->setData(entry.id);
    const UINT id = entry.id;
    QObject::connect(action, &QAction::triggered, action,
                     [window, id] { PostMessageA(window, WM_COMMAND, MAKEWPARAM(id, 0), 0); });
  }
}

namespace {

// Sends WM_INITMENUPOPUP, then fills the pull-down from the record.
void OpenPullDown(HWND window, HMENU popup, int position, QMenu& menu) {
  if (!IsWindowAlive(window)) {
    return;
  }
  SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
               MAKELPARAM(static_cast<UINT>(position), 0));
  menu.clear();
  qDeleteAll(menu.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
  if (!IsWindowAlive(window)) {
    return;
  }
  FillMenu(window, popup, menu);
}

}  // namespace

void MenuBar::focusOutEvent(QFocusEvent* event) {
  QMenuBar::focusOutEvent(event);
  if (IsWindowAlive(window_)) PostMessageA(window_, WM_EXITMENULOOP, 0, 0);
}

void FillMenuBar(QMenuBar& bar, HWND window, HMENU menu) {
  bar.clear();
  int position = 0;
  for (const MenuEntry& entry : menu->entries) {
    assert((entry.flags & MF_POPUP) != 0 && "a menu bar holds pull-downs");
    QMenu* const pullDown = bar.addMenu(QString::fromStdString(entry.text));
    const HMENU popup = entry.popup;
    QObject::connect(pullDown, &QMenu::aboutToShow, pullDown,
                     [=] { OpenPullDown(window, popup, position, *pullDown); });
    QObject::connect(pullDown, &QMenu::aboutToHide, pullDown, [window] {
      if (IsWindowAlive(window)) {
        PostMessageA(window, WM_EXITMENULOOP, 0, 0);
      }
    });
    ++position;
  }
}

}  // namespace platform_qt
