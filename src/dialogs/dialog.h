// What the dialogs of the program have in common: each is one unit and one class derived from Dialog, which
// holds what the dialog works on and hands its answer back as plain data. OK, Cancel, Help and the closing of
// the window are routed here, in one place. A dialog carries texts and states between its controls and a
// logic unit; it knows neither the main window nor its state.
#pragma once

#include "dialogs/help.h"
#include "platform/dialog.h"

// The button of a dialog that opens the help book (none: 0), and where. F1 does the same without a button.
struct HelpButton {
  int button = 0;
  int context = kHelpContents;
};

class Dialog {
 public:
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Runs it, modal to `owner` (may be null). The result is that of End; -1: it could not be shown, or the
  // program ends meanwhile.
  [[nodiscard]] INT_PTR Run(HWND owner);

 protected:
  explicit Dialog(const DialogTemplate& controls, HelpButton help = {}) : template_(controls), help_(help) {}
  virtual ~Dialog() = default;

  // Fills the controls. True leaves the focus to the first of them, false when it was set.
  virtual bool Start() = 0;
  // OK.
  virtual void Accept() { End(1); }
  // What the user did to any other control.
  virtual void Act(int control, UINT notification);
  // A message that is peculiar to the dialog. False: it is none of those.
  virtual bool Handle(UINT message, WPARAM wParam, LPARAM lParam);

  // Closes the dialog when the handler has returned.
  void End(INT_PTR result);
  [[nodiscard]] HWND Window() const { return window_; }
  [[nodiscard]] HWND Control(int id) const { return GetDlgItem(window_, id); }
  // Sends a message to a control.
  LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  bool Route(UINT message, WPARAM wParam, LPARAM lParam);
  void Command(int control, UINT notification);

  const DialogTemplate& template_;
  HelpButton help_;
  HWND window_ = nullptr;
};
