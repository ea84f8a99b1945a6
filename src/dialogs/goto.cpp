#include "dialogs/goto.h"

#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "resources/dialogs/goto_dialog.h"

namespace {

namespace ids = goto_dialog;

GoToChoice ChoiceOf(int radio) {
  return static_cast<GoToChoice>(radio - ids::kTop + 1);
}

class GoToDialog : public Dialog {
 public:
  explicit GoToDialog(const GoToLimits& limits) : Dialog(ids::kTemplate), limits_(limits) {}
  [[nodiscard]] const GoToAnswer& Answer() const { return answer_; }

 protected:
  bool Start() override {
    CheckRadioButton(Window(), ids::kTop, ids::kPageNumber, ids::kTop);
    Send(ids::kNumber, EM_LIMITTEXT, kFieldChars);
    ShowField(GoToChoice::top);
    SetFocus(Control(ids::kTop));
    if (!GoToOffersPages(limits_)) EnableWindow(Control(ids::kPageNumber), FALSE);
    return false;
  }

  void Accept() override {
    const GoToChoice choice = ChosenRadio();
    const std::string text = FieldText(Window(), ids::kNumber);
    if (!CheckField(Window(), ids::kNumber, GoToValidate(choice, text, limits_))) return;
    answer_ = GoToRead(choice, text, limits_.fileLength);
    End(1);
  }

  void Act(int control, UINT /*notification*/) override {
    if (control >= ids::kTop && control <= ids::kPageNumber) ShowField(ChoiceOf(control));
  }

 private:
  GoToChoice ChosenRadio() {
    for (int radio = ids::kTop; radio <= ids::kPageNumber; ++radio) {
      if (IsDlgButtonChecked(Window(), radio) == BST_CHECKED) return ChoiceOf(radio);
    }
    return GoToChoice::none;
  }

  // Shows what goes with a choice. An enabled field is where the user goes on.
  void ShowField(GoToChoice choice) {
    const GoToField field = GoToFieldOf(choice, limits_);
    const HWND edit = Control(ids::kNumber);
    SetDlgItemTextA(Window(), ids::kRange, field.range.c_str());
    SetDlgItemTextA(Window(), ids::kNumber, field.text.c_str());
    EnableWindow(edit, field.enabled ? TRUE : FALSE);
    if (!field.enabled) return;
    SetFocus(edit);
    Send(ids::kNumber, EM_SETSEL, 0, -1);
  }

  GoToLimits limits_;
  GoToAnswer answer_;
};

}  // namespace

std::optional<GoToAnswer> RunGoTo(HWND owner, const GoToLimits& limits) {
  GoToDialog dialog(limits);
  if (dialog.Run(owner) != 1) return std::nullopt;
  return dialog.Answer();
}
