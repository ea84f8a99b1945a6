// A dialog of the program: the window, its controls, and what the keys Enter and Esc mean in it. It is built
// from a template, lives as long as RunDialog, and knows nothing of what the program asks.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <deque>
#include <vector>

#include "platform/qt/controls/controls.h"

namespace platform_qt {

// A notification of a control, as long as it is no more than input: WM_COMMAND once it is served.
inline constexpr UINT kNotification = 0xFFFF0002U;

class ProgramDialog;

struct DialogWindow : HWND__ {
  DialogWindow(ProgramDialog& itsDialog, WNDPROC itsProcedure);
  ~DialogWindow() override;
  DialogWindow(const DialogWindow&) = delete;
  DialogWindow& operator=(const DialogWindow&) = delete;

  [[nodiscard]] std::string Text() const override { return caption; }
  void SetText(const char* text) override;
  // A dialog as such has no picture; its controls have.
  void Invalidate(const RECT* rect, bool erase) override;

  ProgramDialog& dialog;
  std::string caption;
};

class ProgramDialog : public QDialog, public ControlHost {
 public:
  ProgramDialog(const DialogTemplate& description, QWidget* parent, DLGPROC procedure);
  ~ProgramDialog() override;
  ProgramDialog(const ProgramDialog&) = delete;
  ProgramDialog& operator=(const ProgramDialog&) = delete;

  [[nodiscard]] HWND Handle() override { return &window_; }
  [[nodiscard]] QWidget* Widget() override { return this; }
  [[nodiscard]] HFONT ItemFont() override;
  void Notify(int id, WORD code, HWND control) override;

  [[nodiscard]] DLGPROC Procedure() const { return procedure_; }
  [[nodiscard]] std::deque<Control>& Controls() { return controls_; }
  [[nodiscard]] Control* Find(int id);  // null when there is none
  [[nodiscard]] Control* FirstTabStop();

  // Ends the dialog; the first result counts.
  void End(INT_PTR result);
  [[nodiscard]] bool Ended() const { return ended_; }
  [[nodiscard]] INT_PTR Answer() const { return answer_; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildControls(const DialogTemplate& description);
  bool TakeKey(const QKeyEvent& event);
  void PressEnter();
  void PressEscape();
  void ShowDefault(QObject* focused);
  void BindLabels();
  // The control that a label's mnemonic leads to; null when there is none.
  [[nodiscard]] const Control* ControlBehind(const Control& label) const;
  void FocusBehind(const Control& label);
  [[nodiscard]] Control* ControlOf(const QObject* widget);

  DialogWindow window_;
  DLGPROC procedure_;
  std::deque<Control> controls_;
  QPushButton* default_ = nullptr;
  HFONT itemFont_ = nullptr;
  bool ended_ = false;
  INT_PTR answer_ = -1;
};

// The dialog behind a handle; null when it is none, or gone.
[[nodiscard]] ProgramDialog* ProgramDialogOf(HWND window);

}  // namespace platform_qt
