#include "dialogs/find_text.h"

#include "dialogs/dialog.h"
#include "dialogs/find_controls.h"
#include "resources/dialogs/find_text_dialog.h"

namespace {

namespace ids = find_text_dialog;

class FindTextDialog : public Dialog {
 public:
  FindTextDialog(ViewOptions code, RecentSearchLists& recent, SearchState& search)
      : Dialog(ids::kTemplate), code_(code), recent_(recent), search_(search) {}

 protected:
  bool Start() override {
    std::vector<std::string> rows;
    rows.reserve(kRecentStrings);
    for (int row = 0; row < recent_.RecentTextCount; ++row)
      rows.push_back(HistoryText(recent_.RecentTexts[row], code_));
    FillHistory(Window(), ids::kKey, rows);
    CheckDlgButton(Window(), ids::kCaseSensitive, search_.TextCase ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(Window(), ids::kFromTop, StartsFromTop(search_) ? BST_CHECKED : BST_UNCHECKED);
    SetFocus(Control(ids::kKey));
    return false;
  }

  void Accept() override { Finish(false); }

  void Act(int control, UINT /*notification*/) override {
    if (control == ids::kMarkAll) Finish(true);
  }

 private:
  // A chosen row stands for its bytes, whatever they look like; only typed text is converted.
  void Finish(bool markAll) {
    const SearchWish wish{IsTicked(Window(), ids::kCaseSensitive), IsTicked(Window(), ids::kFromTop),
                          markAll};
    const FieldCheck check = SetTextSearch(FieldText(Window(), ids::kKey), ChosenRow(Window(), ids::kKey),
                                           wish, code_, recent_, search_);
    if (CheckField(Window(), ids::kKey, check)) End(1);
  }

  ViewOptions code_;
  RecentSearchLists& recent_;
  SearchState& search_;
};

}  // namespace

INT_PTR RunFindText(HWND owner, ViewOptions code, RecentSearchLists& recent, SearchState& search) {
  return FindTextDialog(code, recent, search).Run(owner);
}
