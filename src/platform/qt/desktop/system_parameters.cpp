#include <QApplication>
#include <QScreen>
#include <cmath>

#include "platform/qt/base/unknown.h"
#include "platform/win32.h"

BOOL SystemParametersInfoA(UINT action, UINT /*param*/, void* result, UINT /*flags*/) {
  if (action != SPI_GETWHEELSCROLLLINES) {
    platform_qt::ReportUnknown("SystemParametersInfoA", action);
    return FALSE;
  }
  *static_cast<UINT*>(result) = static_cast<UINT>(QApplication::wheelScrollLines());
  return TRUE;
}

int GetSystemMetrics(int index) {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const QRect all = screen->virtualGeometry();
  const auto pixels = [screen](int units) {
    return static_cast<int>(std::lround(units * screen->devicePixelRatio()));
  };
  switch (index) {
    case SM_XVIRTUALSCREEN:
      return pixels(all.x());
    case SM_YVIRTUALSCREEN:
      return pixels(all.y());
    case SM_CXVIRTUALSCREEN:
      return pixels(all.width());
    case SM_CYVIRTUALSCREEN:
      return pixels(all.height());
    default:
      platform_qt::ReportUnknown("GetSystemMetrics", static_cast<std::uint64_t>(index));
      return 0;
  }
}
