// The controls of a dialog: the toolkit's widgets behind the handles that the program holds. They know which
// messages they understand, and nothing of what the program does with them; of their dialog they know what
// ControlHost says.
//
// The hard idea: a widget acts at once, but what the user did reaches the program as a message of the input
// queue. Only signals that the toolkit gives for acts of the user are connected, so that no call of the
// program tells it what it did itself.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <map>
#include <memory>

#include "platform/dialog.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

// The dialog that a control stands in.
class ControlHost {
 public:
  virtual ~ControlHost() = default;
  [[nodiscard]] virtual HWND Handle() = 0;
  [[nodiscard]] virtual QWidget* Widget() = 0;
  // What a button that the program draws holds at first: as large as the dialog's texts. May be null.
  [[nodiscard]] virtual HFONT ItemFont() = 0;
  // Tells the program, by way of the queue, what the user did.
  virtual void Notify(int id, WORD code, HWND control) = 0;
  // Called when a procedure of a control of a destroyed dialog has returned.
  virtual void GoWhenAtRest() = 0;
};

struct Control : HWND__ {
  // Makes the widget, and connects what the user does with it to the queue.
  Control(ControlHost& itsHost, const ControlTemplate& description, WNDPROC itsProcedure);
  ~Control() override;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] bool IsCombo() const { return combo != nullptr || kind == ControlKind::simpleCombo; }
  [[nodiscard]] std::string Text() const override;
  void SetText(const char* text) override;
  void SyncSize() override;
  LRESULT DeliverHeld(LPARAM number) override;
  void Reap() override { host.GoWhenAtRest(); }

  // Holds an input event for the procedure in front of the control. False: there is none, or the event is no
  // such input, and it goes on to the control.
  bool HoldInput(const QEvent& event);

  ControlKind kind;
  int id;
  ControlHost& host;
  WNDPROC own;  // the procedure that it began with
  // The widget, or the part of it, that is one of these.
  QLabel* label = nullptr;
  QLineEdit* edit = nullptr;
  QComboBox* combo = nullptr;
  QListWidget* list = nullptr;  // of a simple combo box the one below the field
  QAbstractButton* button = nullptr;
  QGroupBox* group = nullptr;

  int limit = 0;  // characters that the user can type; 0: no limit
  int row = -1;   // chosen in a combo box of either kind; -1 when the text was edited since
  HICON icon = nullptr;

  std::map<LPARAM, std::unique_ptr<QEvent>> held;
  LPARAM lastHeld = 0;
  QEvent* current = nullptr;  // handed to the program's procedure at this moment
};

}  // namespace platform_qt
