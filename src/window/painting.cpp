#include "window/painting.h"

#include <algorithm>
#include <string_view>

#include "platform/bus.h"
#include "window/main_window_state.h"
#include "window/notice.h"
#include "window/reading/lit_hits.h"
#include "window/reading/status.h"
#include "window/scrolling.h"

namespace {

constexpr std::uint32_t kNoteFlags = 0x0F00;  // a line with any of these flags carries a note
constexpr std::string_view kTruncatedNote = " [Truncated...] ";
constexpr std::string_view kIncompleteNote = " [Incomplete Line...] ";
constexpr int kFrozenRule = 3;  // pixels of the rule behind the frozen columns, with the gaps at its sides

struct RowColors {
  COLORREF text, background;
};

RowColors Colors(ColorSlot text, ColorSlot background) {
  return {ColorTable[text], ColorTable[background]};
}

RowColors SetColors(HDC dc, RowColors colors) {
  return {SetTextColor(dc, colors.text), SetBkColor(dc, colors.background)};
}

void DrawRule(HDC dc, int style, int fromX, int fromY, int toX, int toY) {
  const HPEN pen = CreatePen(style, 1, ColorTable[WindowText]);
  const HGDIOBJ former = SelectObject(dc, pen);
  MoveToEx(dc, fromX, fromY, nullptr);
  LineTo(dc, toX, toY);
  SelectObject(dc, former);
  DeleteObject(pen);
}

// A distance that a rectangle can hold, with room for the few pixels that are added to it.
int Pixels(std::int64_t distance) {
  constexpr std::int64_t kFar = std::int64_t{1} << 30;
  return static_cast<int>(std::clamp(distance, -kFar, kFar));
}

// One paint: what is the same for all its rows.
class Painter {
 public:
  explicit Painter(const PAINTSTRUCT& paint)
      : dc_(paint.hdc),
        paint_(paint.rcPaint),
        frozen_(std::max(MainState.FrozenColumns, 0)),
        frozenWidth_(frozen_ != 0 ? Pixels(std::int64_t{frozen_} * MainState.CharWidth + kFrozenRule) : 0),
        brush_(CreateSolidBrush(ColorTable[Background])) {}
  ~Painter() { DeleteObject(brush_); }
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  void DrawTitles();
  void DrawLines();

 private:
  // The parts of a line on the screen.
  struct RowText {
    CellView frozen, scrolling;
  };
  [[nodiscard]] RowText SplitLine(const LineEntry& line, const TextBuffer& text) const;
  void DrawFrozen(int y, CellView text);
  void DrawScrolling(int x, RECT rect, CellView text);
  void DrawLit(const LineEntry& line, int y, bool inverted);
  void DrawLine(int index, int y);
  int TextEnd(const LineEntry& line, CellView scrolling);
  void DrawBehindText(int y, int endX);
  void DrawNote(const LineEntry& line, int y, int endX);
  void DrawBelow();

  HDC dc_;
  RECT paint_;
  std::int32_t frozen_;
  int frozenWidth_;
  HBRUSH brush_;
  int titleBottom_ = 0;  // of the titles that this paint has drawn
};

Painter::RowText Painter::SplitLine(const LineEntry& line, const TextBuffer& text) const {
  const CellView whole = LineCells(line, text);
  const auto skip =
      static_cast<std::size_t>(std::max<std::int64_t>(std::int64_t{frozen_} + MainState.HorzOffset, 0));
  return {whole.substr(0, static_cast<std::size_t>(frozen_)), whole.substr(std::min(skip, whole.size()))};
}

void Painter::DrawFrozen(int y, CellView text) {
  const RECT rect{0, y, frozenWidth_ - 1, y + MainState.CharHeight};
  DrawCells(dc_, 0, y, &rect, text);
}

void Painter::DrawScrolling(int x, RECT rect, CellView text) {
  DrawCells(dc_, x, rect.top, &rect, text);
}

void Painter::DrawTitles() {
  const MainWindowState& state = MainState;
  const LineArray& titles = state.Titles.Lines;
  if (titles.Acnt <= 0 || TitleRows() * state.CharHeight <= paint_.top) return;
  SetColors(dc_, Colors(HeadingText, HeadingBgnd));
  int y = 0;
  for (int i = titles.Acur; i < titles.Alast && y < state.ClientHeight; ++i) {
    const RowText row = SplitLine(titles.Aline[i], state.Titles.Text);
    if (frozen_ != 0) DrawFrozen(y, row.frozen);
    DrawScrolling(frozenWidth_, {frozenWidth_, y, state.ClientWidth + 1, y + state.CharHeight},
                  row.scrolling);
    y += state.CharHeight;
  }
  DrawRule(dc_, PS_SOLID, 0, y - 1, state.ClientWidth, y - 1);
  titleBottom_ = y;
}

// Where the text of a line, or the least painted width, ends.
int Painter::TextEnd(const LineEntry& line, CellView scrolling) {
  const MainWindowState& state = MainState;
  const std::int64_t padded =
      (std::int64_t{state.PadLineLength} - frozen_ - state.HorzOffset) * state.CharWidth;
  std::int64_t width = std::max<std::int64_t>(padded, CellsWidth(dc_, scrolling.size()));
  if ((line.Lflags & LF_PAGEGAP) != 0) width = 0;
  const int end = Pixels(width + frozenWidth_);
  return end > 0 ? end + 2 : end;
}

// The rest of the row takes the background color.
void Painter::DrawBehindText(int y, int endX) {
  const HGDIOBJ formerBrush = SelectObject(dc_, brush_);
  const HGDIOBJ formerPen = SelectObject(dc_, GetStockObject(NULL_PEN));
  Rectangle(dc_, endX, y, MainState.ClientWidth + 1, y + MainState.CharHeight + 1);
  SelectObject(dc_, formerPen);
  SelectObject(dc_, formerBrush);
}

void Painter::DrawNote(const LineEntry& line, int y, int endX) {
  const std::string_view note = (line.Lflags & LF_TRUNCATED) != 0    ? kTruncatedNote
                                : (line.Lflags & LF_INCOMPLETE) != 0 ? kIncompleteNote
                                                                     : std::string_view();
  if (note.empty()) return;
  const RowColors former = SetColors(dc_, Colors(CommentText, CommentBgnd));
  TextOutA(dc_, endX + 2, y, note.data(), static_cast<int>(note.size()));
  SetColors(dc_, former);
}

void Painter::DrawLine(int index, int y) {
  const MainWindowState& state = MainState;
  const LineEntry& line = state.Lines.Aline[index];
  RowColors colors = Colors(WindowText, WindowBgnd);
  if ((line.Lflags & LF_TAGMASK) != 0) colors = Colors(TagText, TagBgnd);
  if ((line.Lflags & LF_MESSAGE) != 0) colors = Colors(MessageText, MessageBgnd);
  SetColors(dc_, colors);

  const RowText row = SplitLine(line, state.Text);
  const int bottom = y + state.CharHeight;
  const int endX = TextEnd(line, row.scrolling);
  const bool background = (state.FormatFlags & VO_BACKGROUND) != 0;
  const int right = (background ? endX : state.ClientWidth + 1) + 1;
  if (frozen_ != 0) {
    SetColors(dc_, Colors(HeadingText, HeadingBgnd));
    DrawFrozen(y, row.frozen);
    SetColors(dc_, colors);
  }
  if (right > 0) DrawScrolling(frozenWidth_ + 1, {frozenWidth_, y, right, bottom}, row.scrolling);
  if (background && endX < state.ClientWidth) DrawBehindText(y, endX);
  if (state.ShowMessages != 0 && (line.Lflags & kNoteFlags) != 0 && endX < state.ClientWidth) {
    DrawNote(line, y, endX);
  }
  if ((line.Lflags & LF_PAGEMARK) != 0) DrawRule(dc_, PS_DOT, 0, y, state.ClientWidth + 1, y);
  const bool inverted = state.Lines.Aline[index + 1].Lpos > state.SelStart && line.Lpos < state.SelEnd;
  DrawLit(line, y, inverted);
  if (inverted) {
    const RECT rect{0, y, state.ClientWidth + 1, bottom};
    InvertRect(dc_, &rect);
  }
}

// The hits of a search, over the text that is drawn. Where the row is inverted behind this, what belongs to
// the hit that is selected is drawn so that it has its colors after that.
void Painter::DrawLit(const LineEntry& line, int y, bool inverted) {
  const MainWindowState& state = MainState;
  for (const LitSpan& span : LitIn(line.Lpos)) {
    const CellView cells = LineCells(line, state.Text);
    const bool isFrozen = span.first < frozen_;
    const std::int32_t hidden = isFrozen ? 0 : frozen_ + state.HorzOffset;
    const std::int32_t first = std::max(span.first, hidden);
    const std::int32_t end = std::min({span.end, line.Llen, isFrozen ? frozen_ : line.Llen});
    if (first >= end) continue;
    RowColors colors = span.isSelected ? Colors(HitText, HitBgnd) : Colors(OtherHitText, OtherHitBgnd);
    if (inverted) colors = {colors.text ^ kMostColor, colors.background ^ kMostColor};
    const RowColors former = SetColors(dc_, colors);
    const int left = isFrozen ? 0 : frozenWidth_ + 1;
    const int x = Pixels(left + std::int64_t{first - hidden} * state.CharWidth);
    const RECT rect{x, y, Pixels(x + std::int64_t{end - first} * state.CharWidth), y + state.CharHeight};
    DrawScrolling(x, rect,
                  cells.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)));
    SetColors(dc_, former);
  }
}

// The area below the last line; its top edge is a line that marks the end of the data.
void Painter::DrawBelow() {
  const MainWindowState& state = MainState;
  const int top = (state.Lines.Alast - state.Lines.Acur + TitleRows()) * state.CharHeight;
  if (top >= state.ClientHeight) return;
  const HGDIOBJ former = SelectObject(dc_, brush_);
  Rectangle(dc_, -1, top, state.ClientWidth + 1, state.ClientHeight + 1);
  SelectObject(dc_, former);
}

void Painter::DrawLines() {
  MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  state.PaintedTop = lines.Aline[lines.Acur].Lpos;
  if (state.CharHeight <= 0) return;
  const int firstRow = paint_.top / state.CharHeight;
  int y = std::max(firstRow * state.CharHeight, titleBottom_);
  int index = lines.Acur + std::max(firstRow - TitleRows(), 0);
  for (; index < lines.Alast && y < paint_.bottom; ++index) {
    DrawLine(index, y);
    y += state.CharHeight;
  }
  if (frozen_ != 0) DrawRule(dc_, PS_SOLID, frozenWidth_ - 1, 0, frozenWidth_ - 1, y);
  DrawBelow();
}

}  // namespace

void PaintWindow() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(MainState.MainWindow, &paint);
  const HGDIOBJ formerFont = SelectObject(dc, MainState.ViewFont);
  {
    Painter painter(paint);
    painter.DrawTitles();
    if (FileIsOpen()) painter.DrawLines();
    DrawNotice(dc);
    UpdateScrollBars();
  }
  SelectObject(dc, formerFont);
  EndPaint(MainState.MainWindow, &paint);
  UpdateStatus();
  LookForHits();
  PublishBusState();
}
