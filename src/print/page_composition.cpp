#include "print/page_composition.h"

#include <algorithm>

#include "engine/hex_format.h"
#include "platform/paths.h"

namespace {

constexpr Cell kFormFeed = 12;
constexpr std::uint32_t kNoteFlags = 0x0F00;  // a line with any of these flags carries a note
constexpr std::string_view kTruncatedNote = " [Truncated...]";
constexpr std::string_view kIncompleteNote = " [Incomplete Line...]";
constexpr int kNoteGap = 2;  // pixels between a line and its note
constexpr int kLeastRows = 3;
constexpr int kPointsPerInch = 72;
constexpr int kOrdinaryPoints = 10;
constexpr std::size_t kPageDigits = 3;
constexpr std::string_view kEllipsis = "...";
constexpr COLORREF kColorBits = 0xFFFFFF;

// Pixels of a margin in hundredths of an inch, rounded.
int MarginPixels(int dpi, std::int32_t margin) {
  return static_cast<int>((std::int64_t{dpi} * margin + 50) / 100);
}

// The last part of UTF-8 text that has at most `columns` characters, three points in front of it.
std::string ShortenedHeading(PageDevice& device, std::string_view text, int columns) {
  if (device.HeadingColumns(text) <= columns) return std::string(text);
  const int room = columns - static_cast<int>(kEllipsis.size());
  if (room <= 0) return {};
  while (!text.empty() && device.HeadingColumns(text) > room) {
    std::size_t next = 1;
    while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xC0) == 0x80)
      ++next;
    text.remove_prefix(next);
  }
  return std::string(kEllipsis) + std::string(text);
}

PageShade Inverted(PageShade shade) {
  return {shade.text ^ kColorBits, shade.background ^ kColorBits};
}

// One job.
class Composer {
 public:
  Composer(const PrintOrder& order, PageDevice& device, PrintHost& host)
      : order_(order), device_(device), host_(host), style_(order.style), tags_(order.tags) {
    if (EjectsOnFormFeed()) style_.options |= VO_KEEPFF;
    tags_.emplace_back();  // the sentinel's
  }

  PrintResult Run();

 private:
  [[nodiscard]] bool Wants(std::uint32_t option) const { return (order_.options & option) != 0; }
  // In a dump, a byte that is a form feed is a byte like all others.
  [[nodiscard]] bool EjectsOnFormFeed() const { return Wants(PO_EJECT_ON_FF) && style_.format != FormatHex; }
  [[nodiscard]] bool Fits(int y) const { return y + cell_.height <= bodyTop_ + bodyHeight_; }
  [[nodiscard]] bool Sent() const { return number_ >= order_.fromPage; }
  [[nodiscard]] RECT RowAt(int y) const { return {left_, y, left_ + bodyWidth_, y + cell_.height}; }
  void Fail(PrintFailure failure) {
    if (result_.failure == PrintFailure::none) result_.failure = failure;
  }

  [[nodiscard]] bool Measure();
  [[nodiscard]] bool HaveLine();
  void Fetch();
  void RunPage();
  [[nodiscard]] int DrawHeading();
  [[nodiscard]] int DrawTitles(int y);
  void DrawLines(int y);
  void DrawLine(const LineEntry& line, CellView text, int y);
  void DrawNote(const LineEntry& line, std::size_t columns, int y);

  const PrintOrder& order_;
  PageDevice& device_;
  PrintHost& host_;
  LineStyle style_;
  std::vector<TagEntry> tags_;
  PrintResult result_;

  // The paper.
  PageCell cell_;
  int left_ = 0, bodyTop_ = 0, bodyWidth_ = 0, bodyHeight_ = 0;

  // The walk through the file.
  std::shared_ptr<PrintBatch> batch_;
  std::int32_t next_ = 0;  // entry of the batch
  ByteIdentity begun_;
  bool ended_ = false;       // there is no further line
  std::int32_t number_ = 0;  // of the page, those that are skipped included
};

bool Composer::Measure() {
  const PageExtent extent = device_.Extent();
  const std::int64_t points = order_.points < 1 ? kOrdinaryPoints : order_.points;
  cell_ = device_.SelectFont(static_cast<int>(-(-35 - extent.dpiY * points) / kPointsPerInch));
  cell_.height = std::max(cell_.height, 1);
  cell_.width = std::max(cell_.width, 1);
  const int height = 2 * cell_.height > extent.height ? 50 * cell_.height : extent.height;
  const int width = 2 * cell_.width > extent.width ? 60 * cell_.width : extent.width;
  const PageSetup& setup = order_.setup;
  left_ = MarginPixels(extent.dpiX, setup.MarginLeft);
  bodyTop_ = MarginPixels(extent.dpiY, setup.MarginTop);
  bodyWidth_ = width - left_ - MarginPixels(extent.dpiX, setup.MarginRight);
  bodyHeight_ = height - bodyTop_ - MarginPixels(extent.dpiY, setup.MarginBottom);
  if (bodyHeight_ < kLeastRows * cell_.height || bodyWidth_ < kLeastRows * cell_.height) return false;
  if ((style_.options & VO_FIXEDLEN) == 0) style_.lineLen = bodyWidth_ / cell_.width;
  style_.lineLen = std::clamp(style_.lineLen, 1, kLongestLine);
  return true;
}

// The batch that begins where the last one ends.
void Composer::Fetch() {
  if (host_.Stopped()) return Fail(PrintFailure::stopped);
  const FilePos from = batch_ != nullptr ? batch_->entries[batch_->count].Lpos : order_.from;
  std::shared_ptr<PrintBatch> batch =
      host_.Fetch(from, order_.to, batch_ != nullptr ? &begun_ : nullptr, style_);
  if (batch == nullptr) return Fail(PrintFailure::memory);
  if (batch->outcome == BatchOutcome::readFailed) return Fail(PrintFailure::read);
  if (batch->outcome == BatchOutcome::formatFailed) return Fail(PrintFailure::format);
  if (batch->outcome == BatchOutcome::stopped) return Fail(PrintFailure::stopped);
  if (batch_ == nullptr) begun_ = batch->identity;
  batch_ = std::move(batch);
  next_ = 0;
  LineArray lines{batch_->entries.get(), kViewLines, 0, 0, static_cast<std::int16_t>(batch_->count)};
  TagList tags{tags_.data(), static_cast<std::int16_t>(tags_.size() - 1),
               static_cast<std::int16_t>(tags_.size() - 1)};
  MarkLines(lines, tags);
}

// Whether there is a line to be printed: entry next_ of the batch.
bool Composer::HaveLine() {
  if (!ended_ && (batch_ == nullptr || next_ == batch_->count)) {
    const bool more = batch_ == nullptr || batch_->entries[next_].Lpos < order_.to;
    if (more) Fetch();
    ended_ = !more || result_.failure != PrintFailure::none || batch_->count == 0;
  }
  return !ended_ && batch_->entries[next_].Lpos < order_.to;
}

// The y of what stands below the heading.
int Composer::DrawHeading() {
  const bool named = Wants(PO_FILE_NAME | PO_FULL_PATH);
  std::string right = Wants(PO_DATE_TIME) ? order_.stamp : std::string();
  if (Wants(PO_PAGE_NUMBER)) {
    std::string digits = std::to_string(number_);
    digits.resize(std::max(digits.size(), kPageDigits), ' ');
    right += (right.empty() ? "Page " : "  Page ") + digits;
  }
  if (!named && right.empty()) return bodyTop_;
  if (Sent()) {
    const int rightWidth = device_.HeadingColumns(right) * cell_.width;
    const int rightX = left_ + (bodyWidth_ - rightWidth) / cell_.width * cell_.width;
    if (named) {
      const int room = right.empty() ? bodyWidth_ : rightX - left_ - 2 * cell_.width;
      const char* const path = order_.Fname.c_str();
      const std::string name =
          ShortenedHeading(device_, Wants(PO_FULL_PATH) ? path : BaseName(path), room / cell_.width);
      device_.DrawHeading(left_, bodyTop_, name, order_.text);
    }
    if (!right.empty()) device_.DrawHeading(rightX, bodyTop_, right, order_.text);
  }
  return bodyTop_ + 2 * cell_.height;
}

// The y of what stands below the titles.
int Composer::DrawTitles(int y) {
  if (!Wants(PO_PAGE_TITLES)) return y;
  for (const CellRow& title : order_.titles) {
    if (Sent() && Fits(y)) {
      device_.DrawRow(RowAt(y), title.View(), Wants(PO_SHADE_TAGS) ? order_.heading : order_.text);
    }
    y += cell_.height;
  }
  if (!order_.titles.empty() && !Fits(y)) Fail(PrintFailure::titles);
  return y;
}

void Composer::DrawNote(const LineEntry& line, std::size_t columns, int y) {
  const std::string_view note = (line.Lflags & LF_TRUNCATED) != 0    ? kTruncatedNote
                                : (line.Lflags & LF_INCOMPLETE) != 0 ? kIncompleteNote
                                                                     : std::string_view();
  const std::int64_t width = static_cast<std::int64_t>(columns) * cell_.width;
  if (note.empty() || width >= bodyWidth_ - kNoteGap) return;
  device_.DrawNote(left_ + static_cast<int>(width) + kNoteGap, y, note,
                   Wants(PO_SHADE_TAGS) ? order_.comment : order_.text);
}

void Composer::DrawLine(const LineEntry& line, CellView text, int y) {
  const bool tagged = (line.Lflags & LF_TAGMASK) != 0;
  PageShade shade = order_.text;
  if (Wants(PO_SHADE_TAGS) && tagged && !Wants(PO_TAGS_ONLY)) shade = order_.tag;
  const FilePos lineEnd = batch_->entries[next_ + 1].Lpos;
  if (Wants(PO_SHADE_SELECTION) && lineEnd > order_.SelStart && line.Lpos < order_.SelEnd) {
    shade = Inverted(shade);
  }
  device_.DrawRow(RowAt(y), text, shade);
  if (order_.PrintMessages && (line.Lflags & kNoteFlags) != 0) DrawNote(line, text.size(), y);
}

void Composer::DrawLines(int y) {
  std::int32_t linesOnPage = 0;
  for (; Fits(y); ++linesOnPage) {
    if (!HaveLine()) return;
    LineEntry& line = batch_->entries[next_];
    CellView text(&batch_->cells[line.Ltext], static_cast<std::size_t>(std::max(line.Llen, 0)),
                  batch_->clusters.get());
    bool breaks = false;
    if (EjectsOnFormFeed()) {
      if (linesOnPage == 0 && text.starts_with(kFormFeed)) {
        ++line.Ltext;
        --line.Llen;
        text.remove_prefix(1);
      }
      if (linesOnPage > 0 && (line.Lflags & LF_PAGEMARK) != 0) return;
      const std::size_t feed = text.find(kFormFeed);
      breaks = feed != std::string_view::npos;
      text = text.substr(0, feed);
    }
    const bool drawn = !Wants(PO_TAGS_ONLY) || (line.Lflags & LF_TAGMASK) != 0;
    if (drawn && Sent()) DrawLine(line, text, y);
    if (breaks) {
      // The rest of the line comes first on the next page.
      const auto taken = static_cast<std::int32_t>(text.size()) + 1;
      line.Ltext += taken;
      line.Llen -= taken;
      return;
    }
    ++next_;
    if (drawn) y += cell_.height;
  }
}

void Composer::RunPage() {
  ++number_;
  host_.PageBegins(number_, Sent());
  if (Sent()) {
    device_.StartPage();
    ++result_.pages;
  }
  const int y = DrawTitles(DrawHeading());
  if (result_.failure != PrintFailure::none) return;
  DrawLines(y);
  if (!Sent()) return;
  const std::int32_t status = device_.EndPage();
  if (status == kPageSent) return;
  Fail(PrintFailure::device);
  result_.status = status;
}

PrintResult Composer::Run() {
  if (!Measure()) Fail(PrintFailure::margins);
  while (result_.failure == PrintFailure::none && number_ < order_.toPage && HaveLine()) {
    if (host_.Stopped()) {
      Fail(PrintFailure::stopped);
    } else {
      RunPage();
    }
  }
  return result_;
}

}  // namespace

PrintResult ComposePages(const PrintOrder& order, PageDevice& device, PrintHost& host) {
  return Composer(order, device, host).Run();
}
