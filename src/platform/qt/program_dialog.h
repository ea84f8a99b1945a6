// A dialog of the program: the window, its controls, and what the keys Enter and Esc mean in it. It is built
// from a template, lives as long as RunDialog, and knows nothing of what the program asks.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <deque>
#include <vector>

#include "platform/qt/controls.h"

namespace platform_qt {

class ProgramDialog : public QDialog {
 public:
  ProgramDialog(const DialogTemplate& description, QWidget* parent, DLGPROC procedure);
  ~ProgramDialog() override;
  ProgramDialog(const ProgramDialog&) = delete;
  ProgramDialog& operator=(const ProgramDialog&) = delete;

  [[nodiscard]] HWND Handle() const { return handle_; }
  [[nodiscard]] DLGPROC Procedure() const { return procedure_; }
  [[nodiscard]] std::deque<Control>& Controls() { return controls_; }
  [[nodiscard]] Control* Find(int id);  // null when there is none
  [[nodiscard]] Control* FirstTabStop();

  // What a button that the program draws holds at first: as large as the dialog's texts. May be null.
  [[nodiscard]] HFONT ItemFont();

  // Tells the program, by way of the queue, what the user did.
  void Notify(int id, WORD code, HWND control);

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

  HWND handle_;
  DLGPROC procedure_;
  std::deque<Control> controls_;
  QPushButton* default_ = nullptr;
  HFONT itemFont_ = nullptr;
  bool ended_ = false;
  INT_PTR answer_ = -1;
};

// Places the controls, and fixes the size of the dialog: dialog units in the dialog's font, and larger ones
// where the desktop's widgets would cut a text.
void LayOut(ProgramDialog& dialog, const DialogTemplate& description);

}  // namespace platform_qt
