// The controls of a dialog: the toolkit's widgets behind the handles that the program holds. They know which
// messages they understand, and nothing of what the program does with them.
//
// The hard idea: a widget acts at once, but what the user did reaches the program as a message of the input
// queue. Only signals that the toolkit gives for acts of the user are connected, so that no call of the
// program tells it what it did itself.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <map>
#include <memory>

#include "platform/dialog.h"

namespace platform_qt {

class ProgramDialog;

// An input event of a control that the program put a procedure in front of. It waits in the queue, and the
// control acts on it when the procedure passes it on. lParam of the message is its number.
inline constexpr UINT kHeldInput = 0xFFFF0001U;
// A notification of a control, as long as it is no more than input: WM_COMMAND once it is served.
inline constexpr UINT kNotification = 0xFFFF0002U;

struct Control {
  ControlKind kind;
  int id;
  HWND handle = nullptr;
  ProgramDialog* dialog = nullptr;
  QWidget* widget = nullptr;
  // The widget, or the part of it, that is one of these.
  QLabel* label = nullptr;
  QLineEdit* edit = nullptr;
  QComboBox* combo = nullptr;
  QAbstractButton* button = nullptr;

  int limit = 0;  // characters that the user can type; 0: no limit
  int row = -1;   // chosen in a combo box; -1 when the text was edited since
  HICON icon = nullptr;

  std::map<LPARAM, std::unique_ptr<QEvent>> held;
  LPARAM lastHeld = 0;
  QEvent* current = nullptr;  // handed to the program's procedure at this moment
};

// Makes the widget, and connects what the user does with it to the queue.
void BuildWidget(Control& control, const ControlTemplate& description);

// The procedure of every control.
LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Holds an input event for the procedure in front of the control. False: there is none, or the event is no
// such input, and it goes on to the control.
bool HoldInput(Control& control, const QEvent& event);
// Hands a held event over as the message that it is.
LRESULT DeliverHeld(HWND window, LPARAM number);

[[nodiscard]] std::string TextOf(const Control& control);
void SetTextOf(Control& control, const char* text);

// A button that the program draws; its picture is that of its handle.
QAbstractButton* MakeOwnerDrawn(QWidget* parent, HWND handle);
// Gives pictures the size that their control has now.
void SyncOwnerDrawn();
// Has the program draw a control.
void DrawItem(Control& control);

}  // namespace platform_qt
