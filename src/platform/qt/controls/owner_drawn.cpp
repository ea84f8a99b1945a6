#include "platform/qt/controls/owner_drawn.h"

#include <QPaintEvent>

#include "platform/qt/drawing/device_context.h"

namespace platform_qt {

namespace {

class OwnerDrawn : public QAbstractButton {
 public:
  OwnerDrawn(QWidget* parent, HWND handle) : QAbstractButton(parent), handle_(handle) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    ShowPicture(*this, handle_->target.Picture(), event->region());
  }

 private:
  HWND handle_;
};

}  // namespace

QAbstractButton* MakeOwnerDrawn(QWidget* parent, HWND control) {
  return new OwnerDrawn(parent, control);
}

void DrawItem(HWND control, int id, HWND dialog, HFONT font) {
  constexpr UINT kDrawEntire = 1;
  const QRect bounds = control->target.Picture().Bounds();
  control->update = QRegion();
  DRAWITEMSTRUCT item{};
  item.CtlType = ODT_BUTTON;
  item.CtlID = static_cast<UINT>(id);
  item.itemAction = kDrawEntire;
  item.hwndItem = control;
  item.hDC = OpenDc(control->target, bounds);
  const HGDIOBJ formerFont = SelectObject(item.hDC, font);
  item.rcItem = RectOf(bounds);
  SendMessageA(dialog, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
  SelectObject(item.hDC, formerFont);
  control->target.NoteDrawn(bounds);
  CloseDc(item.hDC);
}

}  // namespace platform_qt
