#include "window/reading/lit_hits.h"

#include <algorithm>
#include <memory>
#include <string>

#include "engine/row_columns.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/scrolling.h"
#include "window/view_loading.h"
#include "window/watch.h"

namespace {

constexpr UINT kLookMs = 15;  // between a paint and the look, and between two looks for its end
constexpr std::size_t kMostHits = 4096;

// What is looked for where, and what came of it. Owned by the job and the window.
struct Look {
  std::string path;
  ByteIdentity identity;
  SearchState search;
  Hit selected{kNoPosition, kNoPosition};
  LineStyle style;
  std::vector<RowPlace> rows;
  // Those of them that the look before has not seen; what it found stays.
  std::size_t firstNew = 0, endNew = 0;
  std::vector<LitSpan> spans;
  std::shared_ptr<LongJob> job;  // null: not started
};

struct Lit {
  std::vector<LitSpan> spans;
  std::shared_ptr<Look> look;  // the last one; null: none
  bool timerRuns = false;
};
Lit lit;

void LookIn(Look& look, ByteSource& source, LongJob& job) {
  if (source.Open(look.path.c_str()) != 0) return;
  // A hit may begin above the first row.
  const ByteCount before = 2 * ByteCount{look.search.SearchKeyLen};
  const std::span fresh(look.rows.data() + look.firstNew, look.endNew - look.firstNew);
  const FilePos from = std::max<FilePos>(fresh.front().start - before, 0);
  const std::vector<Hit> hits = HitsBetween(source, look.search, from, fresh.back().end, kMostHits, job);
  auto hit = hits.begin();
  for (const RowPlace& row : fresh) {
    while (hit != hits.end() && hit->end <= row.start)
      ++hit;
    for (auto one = hit; one != hits.end() && one->start < row.end && !job.stop; ++one) {
      for (const ColumnSpan& span : ColumnsOf(source, row, one->start, one->end, look.style))
        look.spans.push_back({row.start, span.first, span.end, *one == look.selected});
    }
  }
}

std::shared_ptr<Look> PresentLook() {
  const MainWindowState& state = MainState;
  auto look = std::make_shared<Look>();
  if (state.LightHits == 0 || !FileIsOpen() || !SearchIsDefined(state.Search) || ErrorPageShown()) {
    return look;
  }
  look->path = state.File.Fname;
  look->identity = state.File.Fid;
  look->search = state.Search;
  look->selected = state.FoundHit;
  look->style = PresentStyle();
  const int end = std::min<int>(state.Lines.Acur + VisibleRows(), state.Lines.Alast);
  for (int i = state.Lines.Acur; i < end; ++i)
    look->rows.push_back(PlaceOfRow(LineAt(i), LineAt(i + 1), state.Text));
  return look;
}

bool SameKey(const SearchState& one, const SearchState& other) {
  return one.SearchFlags == other.SearchFlags && one.SearchKeyLen == other.SearchKeyLen &&
         std::equal(one.SearchKey, one.SearchKey + one.SearchKeyLen, other.SearchKey);
}

bool SameRow(const RowPlace& one, const RowPlace& other) {
  return one.start == other.start && one.end == other.end && one.length == other.length;
}

// Whether what one look has found in a row holds for the other.
bool SameQuestion(const Look& one, const Look& other) {
  return one.path == other.path && one.selected == other.selected && one.style.format == other.style.format &&
         one.style.options == other.style.options && one.style.lineLen == other.style.lineLen &&
         SameKey(one.search, other.search) && one.identity == other.identity;
}

void SetTimerTo(bool wanted) {
  if (lit.timerRuns == wanted) return;
  lit.timerRuns = wanted;
  if (wanted) {
    SetTimer(MainState.MainWindow, kLitHitsTimer, kLookMs, nullptr);
  } else {
    KillTimer(MainState.MainWindow, kLitHitsTimer);
  }
}

std::span<const LitSpan> SpansOf(const std::vector<LitSpan>& all, FilePos row) {
  const auto first = std::ranges::lower_bound(all, row, {}, &LitSpan::row);
  auto end = first;
  while (end != all.end() && end->row == row)
    ++end;
  return {all.data() + (first - all.begin()), static_cast<std::size_t>(end - first)};
}

// Leaves out what the look before has seen, at both ends of the rows.
void LeaveOutSeen(const Look& before, Look& look) {
  if (!SameQuestion(before, look)) return;
  const auto seen = [&before](const RowPlace& row) {
    const auto at = std::ranges::lower_bound(before.rows, row.start, {}, &RowPlace::start);
    return at != before.rows.end() && SameRow(*at, row);
  };
  while (look.firstNew < look.endNew && seen(look.rows[look.firstNew]))
    ++look.firstNew;
  while (look.firstNew < look.endNew && seen(look.rows[look.endNew - 1]))
    --look.endNew;
}

// What was found in the new rows, between what is known of the others.
std::vector<LitSpan> WholeSpans(const Look& look) {
  std::vector<LitSpan> spans;
  for (std::size_t i = 0; i < look.rows.size(); ++i) {
    const bool isNew = i >= look.firstNew && i < look.endNew;
    const auto of = SpansOf(isNew ? look.spans : lit.spans, look.rows[i].start);
    spans.insert(spans.end(), of.begin(), of.end());
  }
  return spans;
}

// Repaints the rows whose spans are others than before.
void Take(std::vector<LitSpan> spans) {
  const MainWindowState& state = MainState;
  const std::vector<LitSpan> former = std::move(lit.spans);
  lit.spans = std::move(spans);
  const int end = std::min<int>(state.Lines.Acur + VisibleRows(), state.Lines.Alast);
  for (int i = state.Lines.Acur; i < end; ++i) {
    const FilePos row = LineAt(i).Lpos;
    if (std::ranges::equal(SpansOf(former, row), SpansOf(lit.spans, row))) continue;
    const int y = (i - state.Lines.Acur + TitleRows()) * state.CharHeight;
    const RECT rect{0, y, state.ClientWidth + 1, y + state.CharHeight};
    InvalidateRect(state.MainWindow, &rect, FALSE);
  }
}

}  // namespace

std::span<const LitSpan> LitIn(FilePos row) {
  return SpansOf(lit.spans, row);
}

void LookForHits() {
  if (MainState.LightHits == 0 && lit.look == nullptr) return;
  if (!SearchIsDefined(MainState.Search) && lit.look == nullptr) return;
  SetTimerTo(true);
}

void LightHits() {
  if (WatchIsOn()) return;
  if (lit.look != nullptr && lit.look->job != nullptr) {
    if (!lit.look->job->finished && !lit.look->job->givenUp) return;
    if (!lit.look->job->stop && !lit.look->job->givenUp) Take(WholeSpans(*lit.look));
    const bool again = lit.look->job->stop || lit.look->job->givenUp;
    lit.look->job = nullptr;
    if (again) lit.look = nullptr;
  }
  std::shared_ptr<Look> wanted = PresentLook();
  wanted->endNew = wanted->rows.size();
  if (lit.look != nullptr) LeaveOutSeen(*lit.look, *wanted);
  lit.look = std::move(wanted);
  if (lit.look->rows.empty()) {
    Take({});
    lit.look = nullptr;
    SetTimerTo(false);
    return;
  }
  if (lit.look->firstNew == lit.look->endNew) {
    if (lit.spans != WholeSpans(*lit.look)) Take(WholeSpans(*lit.look));
    SetTimerTo(false);
    return;
  }
  lit.look->job =
      StartUnwatched([look = lit.look](ByteSource& source, LongJob& job) { LookIn(*look, source, job); });
  if (lit.look->job == nullptr) SetTimerTo(false);
}

void ShowHitColumns(const Hit& hit) {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  if (state.LightHits == 0 || (state.FormatFlags & VO_WRAP) != 0 || state.CharWidth <= 0) return;
  int index = lines.Acur;
  while (index < lines.Alast && LineAt(index + 1).Lpos <= hit.start)
    ++index;
  if (index >= lines.Alast) return;
  struct Answer {
    std::string path;
    RowPlace row;
    Hit hit;
    LineStyle style;
    std::vector<ColumnSpan> spans;
  };
  const bool mayWiden = (state.FormatFlags & VO_FIXEDLEN) == 0 && (LineAt(index).Lflags & LF_TRUNCATED) != 0;
  auto answer = std::make_shared<Answer>(Answer{
      state.File.Fname, PlaceOfRow(LineAt(index), LineAt(index + 1), state.Text), hit, PresentStyle(), {}});
  if (mayWiden) answer->row.length = answer->style.lineLen = kLongestLine;
  const WatchEnd end = RunWatched([answer](ByteSource& source, LongJob& /*watch*/) {
    if (source.Open(answer->path.c_str()) != 0) return;
    answer->spans = ColumnsOf(source, answer->row, answer->hit.start, answer->hit.end, answer->style);
  });
  if (end != WatchEnd::finished || answer->spans.empty()) return;
  const ColumnSpan span = answer->spans.front();
  if (span.end > state.FormatWidth) {
    // Rows become so long that the hit stands in them, and one more screen.
    const std::int32_t screen = state.ClientWidth / state.CharWidth;
    MainState.FormatWidth = std::min(span.end + screen, kLongestLine);
    SendMessageA(state.MainWindow, WM_VIEW_LOAD, 0, kNoPosition.Offset());
  }
  ShowColumns(span.first, span.end);
}
