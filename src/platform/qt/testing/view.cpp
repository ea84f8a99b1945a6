#include "platform/testing.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <cassert>

#include "platform/qt/base/hooks.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/testing/records.h"
#include "platform/qt/windows/main_window.h"
#include "platform/qt/windows/menu.h"

namespace platform_testing {

using namespace platform_qt;

namespace {

std::vector<DrawCall>& Drawing() {
  static std::vector<DrawCall> drawing;
  return drawing;
}

void Note(const Drawn& call) {
  const std::string text = call.text != nullptr ? std::string(call.text, call.length) : std::string();
  Drawing().push_back({static_cast<DrawCall::Kind>(call.kind), call.x, call.y, call.rect, text, call.color,
                       call.background, call.penStyle});
}

// Opens a pull-down as a click on its title does. The caller closes it.
QMenu* PullDown(HWND window, int position) {
  QMenuBar& bar = *MainWindowOf(window)->menuBar;
  QAction* const title = bar.actions().at(position);
  bar.setActiveAction(title);
  if (!title->menu()->isVisible()) {
    title->menu()->popup(bar.mapToGlobal(bar.actionGeometry(title).bottomLeft()));
  }
  return title->menu();
}

void CloseMenus(HWND window, QMenu* menu) {
  menu->close();
  if (MainWindow* const main = MainWindowOf(window)) {
    main->menuBar->setActiveAction(nullptr);
  }
}

QAction* ActionOf(const QMenu& menu, UINT id) {
  for (QAction* action : menu.actions()) {
    if (!action->isSeparator() && action->data().toUInt() == id) {
      return action;
    }
  }
  return nullptr;
}

}  // namespace

void LogDrawing(bool on) {
  hooks.drawn = on ? Note : nullptr;
}

const std::vector<DrawCall>& DrawingLog() {
  return Drawing();
}

void ForgetDrawing() {
  Drawing().clear();
}

void ClickMenu(HWND window, UINT id) {
  // An item may come into being only when its pull-down opens, so that all may have to be tried.
  const int known = PopupOfCommand(GetMenu(window), id);
  const auto count = static_cast<int>(MainWindowOf(window)->menuBar->actions().size());
  for (int position = known < 0 ? 0 : known; position < (known < 0 ? count : known + 1); ++position) {
    QMenu* const menu = PullDown(window, position);
    QAction* const action = ActionOf(*menu, id);
    if (action != nullptr) {
      // A grayed item takes no click.
      if (action->isEnabled()) {
        action->trigger();
      }
      CloseMenus(window, menu);
      return;
    }
    CloseMenus(window, menu);
  }
  assert(false && "an item of the menu");
}

std::vector<MenuItem> OpenMenu(HWND window, int position) {
  QMenu* const menu = PullDown(window, position);
  std::vector<MenuItem> items;
  for (const QAction* action : menu->actions()) {
    MenuItem item;
    item.text = action->text().toStdString();
    item.id = action->isSeparator() ? 0 : action->data().toUInt();
    item.enabled = action->isEnabled();
    item.checked = action->isChecked();
    item.separator = action->isSeparator();
    items.push_back(item);
  }
  CloseMenus(window, menu);
  return items;
}

Pixels PixelsOf(const QImage& image) {
  Pixels pixels;
  pixels.width = image.width();
  pixels.height = image.height();
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      pixels.at.push_back(ColorOf(image.pixel(x, y)));
    }
  }
  return pixels;
}

Pixels ClientPixels(HWND window) {
  return PixelsOf(window->target.Picture().View());
}

Pixels PagePixels(int width, int height, const std::function<void(HDC)>& draw) {
  constexpr int kDotsPerInch = 96;
  QImage page(width, height, QImage::Format_RGB32);
  page.fill(Qt::white);
  QPainter painter(&page);
  PainterTarget target(painter, kDotsPerInch);
  const HDC dc = OpenDc(target, page.rect());
  draw(dc);
  CloseDc(dc);
  return PixelsOf(page);
}

bool SavePicture(HWND window, const std::string& path) {
  return window->widget->window()->grab().save(QString::fromStdString(path), "PNG");
}

Bar ScrollBarOf(HWND window, int bar) {
  const ScrollBar& widget = *MainWindowOf(window)->bars[bar];
  return {!widget.isHidden(), widget.Top(), widget.Position()};
}

std::string Caption(HWND window) {
  return window->Text();
}

bool WaitCursorShown(HWND window) {
  return window->widget->cursor().shape() == Qt::WaitCursor;
}

void SetDesktopDark(bool dark) {
  QApplication::setPalette(dark ? QPalette(QColor(40, 40, 40)) : QApplication::style()->standardPalette());
}

}  // namespace platform_testing
