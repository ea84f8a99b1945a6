#include "window/service/requests.h"

#include <algorithm>

#include "places/place.h"
#include "platform/cells.h"
#include "search/search_key.h"
#include "window/clipboard.h"
#include "window/find_commands.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/page_indexing.h"
#include "window/private_messages.h"

namespace {

BusResult Fail(const char* error, const std::string& why) {
  return {error, why};
}

BusResult NoFile() {
  return Fail("NoFile", "no file is open");
}

BusResult At(FilePos position) {
  BusResult result;
  result.position = position.Offset();
  return result;
}

// The bytes to look for. Empty, and `why` says what is wrong.
std::string KeyOf(const std::string& key, bool hex, std::string& why) {
  if (hex) {
    const HexKey bytes = ReadHexKey(key, 1);
    if (bytes.IsGood() && !bytes.bytes.empty()) return {bytes.bytes.begin(), bytes.bytes.end()};
    why = bytes.length.accepted ? bytes.error : bytes.length.message;
    return {};
  }
  const FieldCheck check = CheckTextKey(key, PresentOptions());
  why = check.message;
  return check.accepted ? TextKeyOf(key, PresentOptions()) : "";
}

}  // namespace

BusResult FindForBus(const std::string& key, const std::vector<std::string>& options) {
  if (!FileIsOpen()) return NoFile();
  const auto has = [&options](const char* option) { return std::ranges::count(options, option) > 0; };
  std::string why;
  const std::string bytes = KeyOf(key, has("Hex"), why);
  if (bytes.empty()) return Fail("BadKey", why);
  SearchState& search = MainState.Search;
  search.SearchFlags = SEARCH_TEXT;
  if (!has("Hex")) search.SearchFlags |= static_cast<std::uint16_t>(PresentOptions() & VO_UNICODE);
  if (has("Case") || has("Hex")) search.SearchFlags |= SEARCH_CASE;
  if (has("Top")) search.SearchNext = 0;
  std::ranges::fill(search.SearchKey, std::uint8_t{0});
  std::ranges::copy(bytes, search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(bytes.size());
  const FilePos hit = FindNextQuietly();
  if (hit == kSearchNoHit) return Fail("NotFound", "the key stands nowhere behind the place");
  if (hit == kSearchCanceled) return Fail("Canceled", "the search was ended");
  return hit < 0 ? Fail("ReadFailed", "the file cannot be read") : At(hit);
}

BusResult GoToForBus(const std::string& text) {
  const MainWindowState& state = MainState;
  if (!FileIsOpen()) return NoFile();
  const auto place = ParsePlace(text);
  if (!place) return Fail("BadPlace", "not a place in a file: " + text);
  const GoToTarget target = GoToTargetOf(AnswerOf(*place, state.File.Flen), state.File.Flen);
  if (target.move == GoToMove::page) {
    const FilePos page = FindPage(target.page);
    if (page == kPageStopped) return Fail("Canceled", "the search for the page was ended");
    if (page < 0) return Fail("NotFound", "there is no such page");
    SendMessageA(state.MainWindow, WM_VIEW_MOVE, 0, page.Offset());
  } else {
    SendMessageA(state.MainWindow, WM_VIEW_GOTO, 0, target.position.Offset());
  }
  return FileIsOpen() ? At(LineAt(state.Lines.Acur).Lpos) : NoFile();
}

BusResult RowsForBus() {
  const MainWindowState& state = MainState;
  if (!FileIsOpen()) return NoFile();
  BusResult result;
  const int end = std::min<int>(state.Lines.Acur + VisibleRows(), state.Lines.Alast);
  for (int i = state.Lines.Acur; i < end; ++i)
    result.texts.push_back(CellsToUtf8(LineCells(LineAt(i), state.Text)));
  return result;
}

BusResult CopyForBus() {
  if (!FileIsOpen()) return NoFile();
  if (MainState.SelStart < 0) return Fail("NoSelection", "nothing is selected");
  const auto text = TextOfSelection();
  if (!text) return Fail("Canceled", "the copy was ended");
  if (!text->text || text->failure != CopyFailure::none)
    return Fail("ReadFailed", "the selection cannot be read");
  std::string lines = CellsToUtf8(text->Cells());
  std::erase(lines, '\r');  // of the line ends, which are those of this system on its bus
  BusResult result;
  result.texts.push_back(std::move(lines));
  return result;
}
