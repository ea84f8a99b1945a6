#include <QCursor>
#include <QMenu>

#include "platform/popup.h"
#include "platform/qt/windows/main_window.h"
#include "platform/qt/windows/menu.h"
#include "platform/qt/windows/menu_bar.h"

using namespace platform_qt;

void ShowPopupMenu(HWND window, HMENU popup, const POINT* place) {
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) {
    DestroyMenuTree(popup);
    return;
  }
  auto* const menu = new QMenu(main->frame);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  FillMenu(window, popup, *menu);
  DestroyMenuTree(popup);
  QObject::connect(menu, &QMenu::aboutToHide, menu, [window] {
    if (IsWindowAlive(window)) PostMessageA(window, WM_EXITMENULOOP, 0, 0);
  });
  const qreal density = main->client->devicePixelRatioF();
  menu->popup(place == nullptr
                  ? QCursor::pos()
                  : main->client->mapToGlobal((QPointF(place->x, place->y) / density).toPoint()));
}
