#include "window/find_commands.h"

#include "dialogs/find_hex.h"
#include "dialogs/find_text.h"
#include "marks/tag_list.h"
#include "resources/command_ids.h"
#include "search/search_engine.h"
#include "window/main_window_state.h"
#include "window/marking.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/reading/lit_hits.h"
#include "window/reading/status.h"
#include "window/watch.h"

namespace {

// HitNumber behind a search that came to the end of the file.
constexpr std::int32_t kAtEnd = -1;

// Whether there is a search to run; beeps when there is none.
bool SearchMayRun() {
  if (SearchIsDefined(MainState.Search)) return true;
  MessageBeep(MB_ICONEXCLAMATION);
  return false;
}

// What a search on the reader's thread works on.
struct FindJob {
  std::string path;
  SearchState search;
  FilePos paintedTop = 0;
  FilePos selEnd = kNoPosition;
  std::vector<TagEntry> tags;  // for Mark All
  std::int16_t capacity = 0;
  FindResult result;
  FileError error = 0;
  FilePos place = 0;  // of the error
};

void RunFind(FindJob& find, bool markAll, ByteSource& source, LongJob& job) {
  if (source.Open(find.path.c_str()) != 0) {
    find.result.hit = kSearchReadFailed;
  } else if (markAll) {
    find.result.hit = MarkAll(source, find.search, find.tags, find.capacity, job);
  } else {
    find.result = FindNext(source, find.search, find.paintedTop, find.selEnd, job);
  }
  find.error = source.Failure();
  find.place = job.position;
}

std::shared_ptr<FindJob> MakeFindJob() {
  const MainWindowState& state = MainState;
  auto find = std::make_shared<FindJob>();
  find->path = state.File.Fname;
  find->search = state.Search;
  find->paintedTop = state.PaintedTop;
  find->selEnd = state.SelEnd;
  find->tags.assign(state.Tags.entries, state.Tags.entries + state.Tags.count);
  find->capacity = state.Tags.capacity;
  return find;
}

void ShowBox(const std::string& text) {
  MessageBeep(MB_ICONHAND);
  MessageBoxA(nullptr, text.c_str(), kSearchFailureCaption, MB_ICONHAND);
}

// Runs a search. False when the user ended it, or the window is to be closed.
bool RunSearch(const std::shared_ptr<FindJob>& find, bool markAll) {
  const WatchEnd end =
      RunWatched([find, markAll](ByteSource& source, LongJob& job) { RunFind(*find, markAll, source, job); });
  return end == WatchEnd::finished && find->result.hit != kSearchCanceled;
}

// The same. False also when it failed, and the user was told.
bool Search(const std::shared_ptr<FindJob>& find, bool markAll) {
  if (!RunSearch(find, markAll)) return false;
  if (find->result.hit == kSearchNoMemory) ShowBox(kSearchNoMemoryText);
  if (find->result.hit != kSearchReadFailed) return true;
  ShowBox("Cannot read " + std::string(find->path) + "\nat byte " + std::to_string(find->place.Offset()) +
          ":\n" + FileErrorText(find->error));
  return false;
}

// Selects what Find Next has found, and shows it.
void TakeHit(const FindResult& result) {
  MainWindowState& state = MainState;
  state.FoundHit = {result.selStart, result.selEnd};
  state.SelStart = result.selStart;
  state.SelEnd = result.selEnd;
  state.Search.SearchNext = result.searchNext;
  // Also in front of a move, so that it does not scroll an image with the former selection.
  RepaintWindow();
  if (result.hit < 0) return;
  UpdateLinesPerScreen();
  if (!HitIsOnScreen(state.Lines, state.LinesPerScreen, result.hit)) {
    SendMessageA(state.MainWindow, WM_VIEW_MOVE, 0, result.hit.Offset());
  }
  ShowHitColumns(state.FoundHit);
}

// What is said behind a search.
void TellHit(const FindJob& find, bool wrapped) {
  MainWindowState& state = MainState;
  const FindResult& result = find.result;
  const FilePos asked = find.search.SearchNext;
  const FilePos from = asked >= 0 ? asked : std::max(find.paintedTop, find.selEnd);
  if (result.hit < 0) {
    state.HitNumber = kAtEnd;
    Say(from <= 0 ? "Not found" : "Not found below; Find Next goes on at the top");
    return;
  }
  if (asked >= 0 || state.HitNumber == kAtEnd) state.HitNumber = 0;
  ++state.HitNumber;
  Say(wrapped ? "Search wrapped to the top" : "Hit " + std::to_string(state.HitNumber));
}

void TellTags() {
  const TagList& tags = MainState.Tags;
  if (tags.count < tags.capacity) Say(std::to_string(tags.count) + (tags.count == 1 ? " tag" : " tags"));
  TellFullTags();
}

}  // namespace

LRESULT FindDialogCommand(UINT id) {
  MainWindowState& state = MainState;
  SearchState& search = state.Search;
  const HWND window = state.MainWindow;
  INT_PTR result = 0;
  if (id == IDM_FIND_TEXT) {
    LoadTextHistory(state.ProfilePath, state.MruSearch, state);
    result = RunFindText(window, PresentOptions(), state, search);
  } else {
    LoadHexHistory(state.ProfilePath, state.MruSearch, state);
    result = RunFindHex(window, PresentOptions(), state, search);
  }
  if (result != 1) return result;
  state.HitNumber = 0;
  if ((search.SearchFlags & SEARCH_FROM_TOP) != 0) search.SearchNext = 0;
  const bool markAll = (search.SearchFlags & SEARCH_MARK_ALL) != 0;
  PostMessageA(window, WM_COMMAND, markAll ? IDM_FIND_MARK_ALL : IDM_FIND_NEXT, 0);
  return result;
}

LRESULT FindNextCommand(UINT /*id*/) {
  if (!SearchMayRun()) return 0;
  const std::shared_ptr<FindJob> find = MakeFindJob();
  if (!Search(find, false)) return 0;
  // A search that found nothing has set its next one to the top of the file.
  const bool wrapped = find->search.SearchNext == 0 && MainState.HitNumber == kAtEnd;
  TakeHit(find->result);
  TellHit(*find, wrapped);
  if (find->result.hit < 0) MessageBeep(MB_ICONEXCLAMATION);
  return 0;
}

FilePos FindNextQuietly() {
  const std::shared_ptr<FindJob> find = MakeFindJob();
  if (!RunSearch(find, false)) return kSearchCanceled;
  const FilePos hit = find->result.hit;
  if (hit >= 0 || hit == kSearchNoHit) TakeHit(find->result);
  return hit;
}

LRESULT FindMarkAllCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (!SearchMayRun()) return 0;
  const std::shared_ptr<FindJob> find = MakeFindJob();
  if (!Search(find, true)) return 0;
  const FilePos first = find->result.hit;
  state.Search.SearchNext = kNoPosition;
  if (first < 0) {
    MessageBeep(MB_ICONEXCLAMATION);
    Say("Not found");
    return 0;
  }
  std::copy(find->tags.begin(), find->tags.end(), state.Tags.entries);
  state.Tags.count = static_cast<std::int16_t>(find->tags.size());
  MarkLines(state.Lines, state.Tags);
  RepaintWindow();
  SendMessageA(state.MainWindow, WM_VIEW_MOVE, 0, first.Offset());
  TellTags();
  return 0;
}
