#include "dialogs/freeze_columns.h"

#include <cstdlib>

#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "resources/dialogs/freeze_columns_dialog.h"
#include "settings/format_options.h"

namespace {

namespace ids = freeze_columns_dialog;

// Posted by the two lines when the user acts on one of them; wParam is the control. It is handled when the
// control has moved its caret.
constexpr UINT WM_SCALE_CLICK = 1759;

constexpr const char* kRuler =
    "....+....1....+....2....+....3....+....4....+....5....+....6....+....7....+....8";
constexpr int kScales[] = {ids::kSample, ids::kRuler};

class FreezeColumnsDialog : public Dialog {
 public:
  FreezeColumnsDialog(std::int32_t count, const ColumnSample& sample)
      : Dialog(ids::kTemplate, {ids::kHelp, kHelpFreezeColumns}),
        count_(count),
        sample_(sample),
        font_(CreateFontIndirectA(&sample.font)) {}
  ~FreezeColumnsDialog() override {
    if (font_ != nullptr) DeleteObject(font_);
  }
  FreezeColumnsDialog(const FreezeColumnsDialog&) = delete;
  FreezeColumnsDialog& operator=(const FreezeColumnsDialog&) = delete;
  [[nodiscard]] std::int32_t Count() const { return count_; }

 protected:
  bool Start() override {
    SetDlgItemInt(Window(), ids::kCount, static_cast<UINT>(count_), FALSE);
    SetDlgItemTextA(Window(), ids::kSample, sample_.line.c_str());
    SetDlgItemTextA(Window(), ids::kRuler, kRuler);
    for (const int scale : kScales) {
      if (font_ != nullptr) Send(scale, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
      former_ = reinterpret_cast<WNDPROC>(
          SetWindowLongPtrA(Control(scale), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ScaleEditProc)));
    }
    return true;
  }

  void Accept() override {
    const std::string text = FieldText(Window(), ids::kCount);
    if (!CheckField(Window(), ids::kCount,
                    ValidateIntField(text, 0, kMostFrozen, "Number of columns to lock"))) {
      return;
    }
    count_ = std::atoi(text.c_str());
    End(1);
  }

  bool Handle(UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
    if (message != WM_SCALE_CLICK) return false;
    const LRESULT selection = SendMessageA(reinterpret_cast<HWND>(wParam), EM_GETSEL, 0, 0);
    SetDlgItemInt(Window(), ids::kCount, LOWORD(static_cast<ULONG_PTR>(selection)), FALSE);
    return true;
  }

 private:
  static LRESULT CALLBACK ScaleEditProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = GetParent(control);
    auto* const dialog =
        static_cast<FreezeColumnsDialog*>(reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, DWLP_USER)));
    if (message == WM_LBUTTONDOWN || message == WM_KEYDOWN) {
      PostMessageA(window, WM_SCALE_CLICK, reinterpret_cast<WPARAM>(control), 0);
    }
    return CallWindowProcA(dialog->former_, control, message, wParam, lParam);
  }

  std::int32_t count_;
  const ColumnSample& sample_;
  HFONT font_;                // of the two lines; null: they keep the dialog's
  WNDPROC former_ = nullptr;  // one for both: they are of one kind
};

}  // namespace

std::optional<std::int32_t> RunFreezeColumns(HWND owner, std::int32_t count, const ColumnSample& sample) {
  FreezeColumnsDialog dialog(count, sample);
  if (dialog.Run(owner) != 1) return std::nullopt;
  return dialog.Count();
}
