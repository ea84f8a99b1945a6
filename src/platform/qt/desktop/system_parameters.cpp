#include <QApplication>

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
