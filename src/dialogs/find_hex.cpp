#include "dialogs/find_hex.h"

#include "dialogs/dialog.h"
#include "dialogs/find_controls.h"
#include "resources/dialogs/find_hex_dialog.h"

namespace {

namespace ids = find_hex_dialog;

class FindHexDialog : public Dialog {
 public:
  FindHexDialog(ViewOptions code, RecentSearchLists& recent, SearchState& search)
      : Dialog(ids::kTemplate), code_(code), recent_(recent), search_(search) {}

 protected:
  bool Start() override {
    FillHistory(Window(), ids::kKey, {recent_.RecentHex, recent_.RecentHex + recent_.RecentHexCount});
    if (!SetHexKey(recent_.RecentHex[0], 0, search_).IsGood()) search_.SearchKeyLen = 0;
    ShowKey();
    CheckDlgButton(Window(), ids::kFromTop, StartsFromTop(search_) ? BST_CHECKED : BST_UNCHECKED);
    SetDlgItemTextA(Window(), ids::kError, " ");
    SetFocus(Control(ids::kKey));
    return false;
  }

  void Accept() override { Finish(false); }

  void Act(int control, UINT notification) override {
    if (control == ids::kMarkAll) Finish(true);
    if (control != ids::kKey) return;
    // The arrow keys choose without opening the list.
    if (notification == CBN_EDITCHANGE || notification == CBN_CLOSEUP || notification == CBN_SELCHANGE) {
      ShowOutcome(SetHexKey(HexText(), 0, search_));
    }
  }

 private:
  std::string HexText() {
    const std::int32_t row = ChosenRow(Window(), ids::kKey);
    return row >= 0 ? recent_.RecentHex[row] : FieldText(Window(), ids::kKey);
  }

  void ShowKey() {
    const std::string text = KeyDisplayText(search_.SearchKey, search_.SearchKeyLen, code_);
    SetDlgItemTextA(Window(), ids::kText, text.c_str());
  }

  // Shows what is wrong with the text, or what it spells.
  void ShowOutcome(const HexKey& key) {
    SetDlgItemTextA(Window(), ids::kError, key.error.c_str());
    if (key.badAt >= 0) {
      const auto at = static_cast<UINT>(key.badAt);
      SetFocus(Control(ids::kKey));  // it may be on the button that was pressed
      Send(ids::kKey, CB_SETEDITSEL, 0, MAKELPARAM(at, at + 1));
      MessageBeep(MB_ICONASTERISK);
    } else if (CheckField(Window(), ids::kKey, key.length)) {
      ShowKey();
    }
  }

  void Finish(bool markAll) {
    const SearchWish wish{true, IsTicked(Window(), ids::kFromTop), markAll};
    const HexKey key = SetHexSearch(HexText(), wish, recent_, search_);
    ShowOutcome(key);
    if (key.IsGood()) End(1);
  }

  ViewOptions code_;
  RecentSearchLists& recent_;
  SearchState& search_;
};

}  // namespace

INT_PTR RunFindHex(HWND owner, ViewOptions code, RecentSearchLists& recent, SearchState& search) {
  return FindHexDialog(code, recent, search).Run(owner);
}
