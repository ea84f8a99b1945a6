#include <QApplication>
#include <QMessageBox>

#include "platform/qt/base/hooks.h"
#include "platform/qt/base/unknown.h"
#include "platform/qt/windows/modal.h"

using namespace platform_qt;

namespace {

constexpr UINT kIconBits = 0x00F0;

QMessageBox::Icon IconOf(UINT style) {
  switch (style & kIconBits) {
    case MB_ICONHAND:
      return QMessageBox::Critical;
    case MB_ICONEXCLAMATION:
      return QMessageBox::Warning;
    case MB_ICONASTERISK:
      return QMessageBox::Information;
    case 0:
      return QMessageBox::NoIcon;
    default:
      ReportUnknown("MessageBoxA", style);
      return QMessageBox::NoIcon;
  }
}

}  // namespace

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
  ReportUnknownBits("MessageBoxA", style, kIconBits | MB_OKCANCEL | MB_DEFBUTTON2);
  QMessageBox box(ParentFor(owner));
  box.setIcon(IconOf(style));
  box.setWindowTitle(QString::fromUtf8(caption != nullptr ? caption : "Error"));
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromUtf8(text));
  const bool canCancel = (style & MB_OKCANCEL) != 0;
  box.setStandardButtons(canCancel ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok);
  box.setDefaultButton((style & MB_DEFBUTTON2) != 0 ? QMessageBox::Cancel : QMessageBox::Ok);
  RunModal(box, owner);
  // A box of one button answers with it, however it was closed.
  return canCancel && box.clickedButton() != box.button(QMessageBox::Ok) ? IDCANCEL : IDOK;
}

BOOL MessageBeep(UINT type) {
  if (hooks.beeped != nullptr) {
    hooks.beeped(type);
  }
  QApplication::beep();
  return TRUE;
}
