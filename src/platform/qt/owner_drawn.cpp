#include <QPaintEvent>
#include <algorithm>

#include "platform/qt/controls.h"
#include "platform/qt/program_dialog.h"
#include "platform/qt/window.h"

namespace platform_qt {

namespace {

class OwnerDrawn : public QAbstractButton {
 public:
  OwnerDrawn(QWidget* parent, HWND handle) : QAbstractButton(parent), handle_(handle) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
  }

 protected:
  void paintEvent(QPaintEvent* event) override { ShowPicture(*this, handle_->surface, event->region()); }

 private:
  HWND handle_;
};

}  // namespace

QAbstractButton* MakeOwnerDrawn(QWidget* parent, HWND handle) {
  return new OwnerDrawn(parent, handle);
}

void SyncOwnerDrawn() {
  for (HWND part : AllDialogParts()) {
    if (part->control == nullptr || part->control->kind != ControlKind::ownerDrawn) {
      continue;
    }
    const QSize size = ClientSize(part);
    if (size != part->surface.Bounds().size()) {
      part->surface.Resize(size.width(), size.height(), BackgroundPixel(part));
      part->update = part->surface.Bounds();
    }
  }
}

void DrawItem(Control& control) {
  constexpr UINT kDrawEntire = 1;
  const HWND window = control.handle;
  window->update = QRegion();
  DRAWITEMSTRUCT item{};
  item.CtlType = ODT_BUTTON;
  item.CtlID = static_cast<UINT>(control.id);
  item.itemAction = kDrawEntire;
  item.hwndItem = window;
  item.hDC = OpenDc(window, window->surface.Bounds());
  const HGDIOBJ formerFont = SelectObject(item.hDC, control.dialog->ItemFont());
  item.rcItem = RectOf(window->surface.Bounds());
  SendMessageA(control.dialog->Handle(), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
  SelectObject(item.hDC, formerFont);
  window->unshown = window->surface.Bounds();
  CloseDc(item.hDC);
}

}  // namespace platform_qt
