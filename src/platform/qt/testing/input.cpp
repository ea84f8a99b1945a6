#include "platform/testing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cassert>
#include <utility>

#include "platform/posix/command_words.h"
#include "platform/posix/file_counters.h"
#include "platform/qt/base/hooks.h"
#include "platform/qt/desktop/toolkit.h"
#include "platform/qt/testing/records.h"
#include "platform/qt/windows/keys.h"
#include "platform/qt/windows/main_window.h"
#include "platform/qt/windows/queue.h"

namespace platform_testing {

using namespace platform_qt;

namespace {

void SendKey(HWND window, int toolkitKey, int keys, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, toolkitKey, ToolkitModifiers(keys), text);
  QWidget* const client = window->widget;
  QCoreApplication::sendEvent(client, &press);
  QKeyEvent release(QEvent::KeyRelease, toolkitKey, ToolkitModifiers(keys), text);
  QCoreApplication::sendEvent(client, &release);
}

}  // namespace

Qt::KeyboardModifiers ToolkitModifiers(int keys) {
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  modifiers.setFlag(Qt::ShiftModifier, (keys & MK_SHIFT) != 0);
  modifiers.setFlag(Qt::ControlModifier, (keys & MK_CONTROL) != 0);
  modifiers.setFlag(Qt::AltModifier, (keys & kAlt) != 0);
  return modifiers;
}

void StartToolkit(int argc, char** argv) {
  if (ToolkitRuns()) {
    return;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", "1");
  qputenv("QT_FONT_DPI", "96");
  hooks.timersStandStill = true;
  HookDialogs();
  platform_qt::StartToolkit(argc > 0 ? argv[0] : "quorl");
}

void SetCommandWords(std::vector<std::string> words) {
  StoreCommandWords(std::move(words));
}

bool PumpUntilIdle(HWND window, HACCEL table) {
  MSG message{};
  for (;;) {
    switch (TakeMessage(message, false)) {
      case Taken::quit:
        return false;
      case Taken::nothing:
        return true;
      case Taken::message:
        break;
    }
    if (table == nullptr || TranslateAcceleratorA(window, table, &message) == 0) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
}

bool TimerIsSet(HWND window, UINT_PTR id) {
  return HasTimer(window, id);
}

void PressKey(HWND window, int virtualKey, int keys) {
  const int key = ToolkitKeyOf(virtualKey);
  assert(key != 0 && "a key that the layer knows");
  SendKey(window, key, keys, QString());
}

void TypeCharacter(HWND window, char character, int keys) {
  const QChar letter = QLatin1Char(character);
  // With Ctrl a letter key types its control character, as on a real keyboard.
  const bool control = (keys & MK_CONTROL) != 0 && letter.isLetter();
  const QString text = control ? QString(QChar(letter.toUpper().unicode() - u'A' + 1)) : QString(letter);
  SendKey(window, letter.toUpper().unicode(), keys, text);
}

void Wheel(HWND window, int delta, bool horizontal, int keys) {
  QWidget* const client = window->widget;
  const QPointF middle(client->width() / 2.0, client->height() / 2.0);
  const QPoint turn = horizontal ? QPoint(-delta, 0) : QPoint(0, delta);
  QWheelEvent event(middle, client->mapToGlobal(middle), QPoint(), turn, Qt::NoButton, ToolkitModifiers(keys),
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(client, &event);
}

void Mouse(HWND window, UINT message, int x, int y, int keys) {
  static Qt::MouseButtons held = Qt::NoButton;
  QWidget* const client = window->widget;
  const QPointF place = QPointF(x, y) / client->devicePixelRatioF();
  QEvent::Type type = QEvent::MouseMove;
  Qt::MouseButton button = Qt::NoButton;
  switch (message) {
    case WM_LBUTTONDOWN:
      type = QEvent::MouseButtonPress;
      button = Qt::LeftButton;
      break;
    case WM_LBUTTONDBLCLK:
      type = QEvent::MouseButtonDblClick;
      button = Qt::LeftButton;
      break;
    case WM_LBUTTONUP:
      type = QEvent::MouseButtonRelease;
      button = Qt::LeftButton;
      break;
    case WM_RBUTTONDOWN:
      type = QEvent::MouseButtonPress;
      button = Qt::RightButton;
      break;
    default:
      assert(message == WM_MOUSEMOVE);
      break;
  }
  held.setFlag(button, type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick);
  QMouseEvent event(type, place, client->mapToGlobal(place), button, held, ToolkitModifiers(keys));
  QCoreApplication::sendEvent(client, &event);
  if (button == Qt::RightButton) {
    held.setFlag(Qt::RightButton, false);
  }
}

void ResizeClient(HWND window, int width, int height) {
  QWidget& frame = window->Whole();
  frame.layout()->activate();
  const QSize other = frame.size() - window->widget->size();
  frame.resize(other + (QSizeF(width, height) / frame.devicePixelRatioF()).toSize());
  frame.layout()->activate();
}

void DragThumb(HWND window, int bar, std::int64_t position) {
  ScrollBar& widget = *MainWindowOf(window)->bars[bar];
  widget.setSliderDown(true);
  widget.setSliderPosition(widget.ValueOf(position));
  widget.setSliderDown(false);
}

std::int64_t FilesOpened() {
  return CountersOfFiles().opened;
}

void ForgetRecords() {
  ForgetDialogs();
  ForgetScripts();
  ForgetDrawing();
}

}  // namespace platform_testing
