#include "window/page_indexing.h"

#include <algorithm>
#include <chrono>

#include "engine/text_format.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"
#include "window/view_loading.h"
#include "window/watch.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr UINT_PTR kTimerId = 3;
// Between two steps, in milliseconds: while the user does nothing, and after a step that could not read the
// file.
constexpr UINT kIdleInterval = 10;
constexpr UINT kPausedInterval = 1000;
// The user is at work for so long behind the last key.
constexpr std::chrono::milliseconds kAtWork{300};
constexpr std::chrono::microseconds kIdleBudget{1000};

Clock::time_point lastInput;
Clock::time_point lastStep;

void ShowFault(PageIndexFault fault, UINT message) {
  const PageIndexBox& box = PageIndexBoxOf(fault);
  const bool beeps = box.beep != kNoBeep;
  if (beeps && !box.beepBehind) MessageBeep(box.beep);
  MessageBoxA(box.owned ? MainState.MainWindow : nullptr,
              PageIndexFaultText(fault, message, MainState.File.Fname).c_str(), box.caption, box.icon);
  if (beeps && box.beepBehind) MessageBeep(box.beep);
}

void ShowFaultOf(PageIndex& index) {
  const PageIndexFault fault = index.fault.exchange(PageIndexFault::none);
  if (fault != PageIndexFault::none) ShowFault(fault, PG_CONT);
}

void SetInterval(UINT milliseconds) {
  PageIndexing& pages = MainState.Pages;
  if (pages.interval == milliseconds) return;
  pages.interval = milliseconds;
  if (milliseconds != 0) {
    pages.timer = SetTimer(MainState.MainWindow, kTimerId, milliseconds, nullptr);
  } else if (pages.timer != 0) {
    KillTimer(MainState.MainWindow, kTimerId);
    pages.timer = 0;
  }
}

UINT LeastInterval() {
  return static_cast<UINT>(std::max(MainState.PageIndexingDelay, 1));
}

// An index whose step hangs cannot be used any more: a new one takes its place.
void ReplaceHanging() {
  PageIndexing& pages = MainState.Pages;
  if (pages.step == nullptr || pages.step->finished || !pages.step->givenUp) return;
  pages.step = nullptr;
  pages.index = std::make_shared<PageIndex>(MainState.File.Fname, TextUnitOf(PresentOptions()));
}

// Starts a step, unless one is under way. The profile says what is done even while the user is at work; while
// they are not, more is.
void Step() {
  PageIndexing& pages = MainState.Pages;
  ReplaceHanging();
  if (WatchIsOn() || (pages.step != nullptr && !pages.step->finished)) return;
  const Clock::time_point now = Clock::now();
  const bool idle = now - lastInput >= kAtWork;
  if (!idle && now - lastStep < std::chrono::milliseconds(LeastInterval())) return;
  lastStep = now;
  const std::int32_t least = MainState.PageIndexingBuffer;
  const std::chrono::microseconds budget = idle ? kIdleBudget : std::chrono::microseconds(0);
  pages.step = StartUnwatched([index = pages.index, least, budget](ByteSource& source, LongJob& job) {
    PageIndexStep(source, *index, {least, budget, &job.stop});
  });
}

void Continue() {
  PageIndexing& pages = MainState.Pages;
  if (pages.index == nullptr) {
    SetInterval(0);
    ShowFault(PageIndexFault::notActive, PG_CONT);
    return;
  }
  ShowFaultOf(*pages.index);
  if (pages.index == nullptr) return;  // the box let a message through
  switch (pages.index->phase) {
    case PageIndexPhase::PG_ACTIVE:
      SetInterval(std::min(kIdleInterval, LeastInterval()));
      Step();
      break;
    case PageIndexPhase::PG_PAUSED:
      SetInterval(std::max(kPausedInterval, LeastInterval()));
      Step();
      break;
    case PageIndexPhase::PG_IDLE:
    case PageIndexPhase::PG_DONE:
      SetInterval(0);
      break;
  }
}

void End() {
  PageIndexing& pages = MainState.Pages;
  if (pages.step != nullptr) pages.step->stop = true;
  pages.step = nullptr;
  pages.index = nullptr;
  SetInterval(0);
}

}  // namespace

LRESULT RunPageIndex(UINT message) {
  switch (message) {
    case PG_START:
      End();
      if (!FileIsOpen()) break;
      MainState.Pages.index = std::make_shared<PageIndex>(MainState.File.Fname, TextUnitOf(PresentOptions()));
      SetInterval(std::min(kIdleInterval, LeastInterval()));
      break;
    case PG_CONT:
      Continue();
      break;
    default:
      End();
      break;
  }
  return 0;
}

void MatchPageIndex() {
  const PageIndexing& pages = MainState.Pages;
  if (pages.index != nullptr && pages.index->unit != TextUnitOf(PresentOptions())) RunPageIndex(PG_START);
}

void NotePageIndexInput() {
  lastInput = Clock::now();
}

PageIndexPages PagesToGoTo() {
  const PageIndexing& pages = MainState.Pages;
  if (pages.index == nullptr) return {};
  PageIndexPages known = PageIndexPagesOf(*pages.index);
  if (known.count >= 0 && pages.index->length != MainState.File.Flen) known.more = true;
  return known;
}

FilePos FindPage(PageNumber page) {
  PageIndexing& pages = MainState.Pages;
  if (pages.index == nullptr) return kPageNoIndex;
  ReplaceHanging();
  const std::shared_ptr<PageIndex> index = pages.index;
  const auto place = std::make_shared<FilePos>(kPageStopped);
  const WatchEnd end = RunWatched(
      [index, place, page](ByteSource& source, LongJob& job) {
        *place = PageIndexFind(source, *index, page, job.stop);
      },
      {&index->scanned, &index->length});
  ShowFaultOf(*index);
  // The find has left the index further on, or found that the file has changed.
  if (pages.index == index && index->phase == PageIndexPhase::PG_ACTIVE) SetInterval(kIdleInterval);
  return end == WatchEnd::finished ? *place : kPageStopped;
}
