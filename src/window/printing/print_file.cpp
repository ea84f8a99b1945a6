#include "window/printing/print_file.h"

#include <algorithm>

#include "print/date_stamp.h"
#include "resources/command_ids.h"
#include "window/files/caption.h"
#include "window/main_window_state.h"
#include "window/printing/print_job.h"
#include "window/view_loading.h"
#include "window/watch.h"

namespace {

// A printer as pages are laid out on it, drawn on by the calls of the window.
class Printer : public PageDevice {
 public:
  Printer(HDC dc, const LOGFONTA& font) : dc_(dc), asked_(font) {}
  ~Printer() override {
    if (former_ != nullptr) SelectObject(dc_, former_);
    if (font_ != nullptr && !isStock_) DeleteObject(font_);
  }
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;

  PageExtent Extent() override {
    return {GetDeviceCaps(dc_, VERTRES), GetDeviceCaps(dc_, HORZRES), GetDeviceCaps(dc_, LOGPIXELSY),
            GetDeviceCaps(dc_, LOGPIXELSX)};
  }
  PageCell SelectFont(int height) override {
    asked_.lfHeight = -height;
    font_ = CreateFontIndirectA(&asked_);
    isStock_ = font_ == nullptr;
    if (isStock_) font_ = static_cast<HFONT>(GetStockObject(ANSI_FIXED_FONT));
    former_ = SelectObject(dc_, font_);
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc_, &metrics);
    width_ = std::max<int>(metrics.tmAveCharWidth, 1);
    return {metrics.tmHeight, metrics.tmAveCharWidth};
  }
  void StartPage() override { static_cast<void>(::StartPage(dc_)); }
  std::int32_t EndPage() override {
    const int result = ::EndPage(dc_);
    return result > 0 ? kPageSent : result < 0 ? result : SP_ERROR;
  }
  void DrawRow(const RECT& rect, CellView text, PageShade shade) override {
    SetShade(shade);
    DrawCells(dc_, rect.left, rect.top, &rect, text);
  }
  void DrawNote(int x, int y, std::string_view text, PageShade shade) override {
    SetShade(shade);
    TextOutA(dc_, x, y, text.data(), static_cast<int>(text.size()));
  }
  void DrawHeading(int x, int y, std::string_view text, PageShade shade) override {
    DrawNote(x, y, text, shade);
  }
  int HeadingColumns(std::string_view text) override {
    SIZE size{};
    GetTextExtentPointA(dc_, text.data(), static_cast<int>(text.size()), &size);
    return size.cx / width_;
  }

 private:
  void SetShade(PageShade shade) {
    SetTextColor(dc_, shade.text);
    SetBkColor(dc_, shade.background);
  }

  HDC dc_;
  LOGFONTA asked_;
  HFONT font_ = nullptr;
  HGDIOBJ former_ = nullptr;
  bool isStock_ = false;
  int width_ = 1;
};

// What fetches a batch on the reader's thread.
struct FetchWork {
  std::string path;
  FilePos from = 0;
  FilePos end = 0;
  bool isFirst = false;
  ByteIdentity begun;
  LineStyle style;
  std::shared_ptr<PrintBatch> batch;
};

void FetchBatch(FetchWork& work, ByteSource& source) {
  if (source.Open(work.path.c_str()) != 0) {
    work.batch->outcome = BatchOutcome::readFailed;
    return;
  }
  if (work.isFirst) {
    work.begun = source.Identity();
    work.from = FirstPrintedRow(work.from, source, work.style);
  }
  FillPrintBatch(*work.batch, work.from, work.end, work.begun, source, work.style);
}

class JobHost : public PrintHost {
 public:
  explicit JobHost(std::string path) : path_(std::move(path)) {}

  std::shared_ptr<PrintBatch> Fetch(FilePos from, FilePos end, const ByteIdentity* begun,
                                    const LineStyle& style) override {
    auto work = std::make_shared<FetchWork>();
    *work = {path_,           from, end, begun == nullptr, begun != nullptr ? *begun : ByteIdentity{}, style,
             MakePrintBatch()};
    if (work->batch == nullptr) return nullptr;
    const WatchEnd ended =
        RunWatched([work](ByteSource& source, LongJob& /*watch*/) { FetchBatch(*work, source); });
    if (ended == WatchEnd::finished) return work->batch;
    // The thread may still write to that one.
    std::shared_ptr<PrintBatch> none = MakePrintBatch();
    if (none != nullptr) {
      none->outcome = ended == WatchEnd::givenUp ? BatchOutcome::stopped : BatchOutcome::readFailed;
    }
    return none;
  }
  void PageBegins(std::int32_t number, bool sent) override {
    ShowPageStatus(sent ? "Printing" : "Skipping", number);
  }
  bool Stopped() override {
    ServePrintJob();
    return PrintJobIsCanceled();
  }

 private:
  std::string path_;
};

PageShade ShadeOfSlots(ColorSlot text) {
  return {ColorTable[text], ColorTable[text + 1]};
}

std::vector<CellRow> TitleTexts(const TitleSet& titles) {
  std::vector<CellRow> texts;
  texts.reserve(kTitleSlots);
  for (int i = 0; i < titles.Lines.Alast; ++i)
    texts.push_back(CopyOf(LineCells(titles.Lines.Aline[i], titles.Text)));
  return texts;
}

// The view's font, of no height yet.
LOGFONTA PrintFont() {
  LOGFONTA font = MainState.ViewLogFont;
  std::copy(std::begin(MainState.FontFace), std::end(MainState.FontFace), font.lfFaceName);
  return font;
}

// All that the job needs but its range, as it is now: while the user is asked, the view may change.
PrintOrder OrderOf(const PrintRequest& request) {
  const MainWindowState& state = MainState;
  PrintOrder order;
  order.Fname = state.File.Fname;
  order.options = request.options;
  order.style = {PresentStyle().format, PresentOptions(), state.LineLength};
  order.SelStart = state.SelStart;
  order.SelEnd = state.SelEnd;
  order.setup = state;
  order.points = state.FontPoints;
  order.PrintMessages = state.PrintMessages != 0;
  order.text = ShadeOfSlots(PrintText);
  order.tag = ShadeOfSlots(PrintTag);
  order.heading = ShadeOfSlots(PrintHead);
  order.comment = ShadeOfSlots(PrintCmnt);
  order.tags.assign(state.Tags.entries, state.Tags.entries + state.Tags.count);
  order.titles = TitleTexts(state.Titles);
  const IntlSettings settings = LoadIntlSettings();
  order.stamp = FormatDateNow(settings) + "  " + FormatTimeNow(settings);
  return order;
}

// What a failure of the layout is told as.
const char* TextOf(PrintFailure failure) {
  switch (failure) {
    case PrintFailure::margins:
      return "Invalid page margins, nothing printed!";
    case PrintFailure::memory:
      return "Cannot allocate buffers!";
    case PrintFailure::titles:
      return "Page titles fill the entire page!";
    case PrintFailure::read:
      return "File read error";
    case PrintFailure::format:
      return "Program error";
    case PrintFailure::none:
    case PrintFailure::stopped:
    case PrintFailure::device:
      break;
  }
  return nullptr;
}

std::string TextOfStatus(std::int32_t status, const std::string& reason) {
  const char* const text = status == 0                ? "Nothing was printed."
                           : status == SP_OUTOFDISK   ? "Not enough disk space for spooling."
                           : status == SP_OUTOFMEMORY ? "Not enough memory for spooling."
                                                      : "Printing error occurred.";
  const bool tellsMore = status == SP_ERROR && !reason.empty();
  return tellsMore ? std::string(text) + "\n\n" + reason : text;
}

// Tells how a job has ended, if it is not as the user wanted.
void TellResult(const PrintResult& result, int ended, const std::string& reason) {
  const char* const text = TextOf(result.failure);
  if (text != nullptr) ShowPrintBox(text, MB_ICONHAND);
  std::int32_t status = result.pages;
  switch (result.failure) {
    case PrintFailure::stopped:
    case PrintFailure::margins:
    case PrintFailure::memory:
    case PrintFailure::titles:
      return;
    case PrintFailure::read:
    case PrintFailure::format:
      status = SP_ERROR;
      break;
    case PrintFailure::device:
      status = result.status;
      break;
    case PrintFailure::none:
      if (ended < 0) status = ended;
      break;
  }
  if (status > 0 || status == SP_APPABORT || status == SP_USERABORT) return;
  ShowPrintBox(TextOfStatus(status, reason), MB_ICONEXCLAMATION);
}

// Whether the pages that were laid out are to reach the printer.
bool IsKept(const PrintResult& result) {
  const bool whole = result.failure == PrintFailure::none || result.failure == PrintFailure::read ||
                     result.failure == PrintFailure::format;
  return whole && result.pages > 0;
}

PrintChoice ChoiceOf(const PrintQuestion& question) {
  if (question.shown && (question.flags & PD_PAGENUMS) != 0) return PrintChoice::pages;
  if ((question.flags & PD_SELECTION) != 0) {
    return question.shown ? PrintChoice::selection : PrintChoice::asRequested;
  }
  return PrintChoice::all;
}

struct PrintTask {
  UINT id;
  std::uint32_t options;  // added to those of Page Setup
  enum class Part : std::uint8_t { selection, fromTop, all } part;
  std::int32_t fromPage, toPage;
};
constexpr PrintTask kTasks[] = {
    {IDM_PRINT, 0, PrintTask::Part::selection, -1, -1},
    {IDM_PRINT_PAGE, PO_NO_DIALOG, PrintTask::Part::fromTop, 1, 1},
    {IDM_PRINT_FILE, PO_NO_DIALOG, PrintTask::Part::all, -1, -1},
    {IDM_PRINT_TAGS, PO_TAGS_ONLY, PrintTask::Part::selection, -1, -1},
    {IDM_PRINT_TAGS_NOW, PO_TAGS_ONLY | PO_NO_DIALOG, PrintTask::Part::selection, -1, -1},
};

}  // namespace

void PrintFile(const PrintRequest& request) {
  if (PrintJobIsOn() || !AskFileLength()) return;
  const FilePos length = MainState.File.Flen;
  if (request.from >= length) return;
  const PrintRange asked = RangeOf(request, length);
  PrintQuestion question;
  question.noDialog = (request.options & PO_NO_DIALOG) != 0;
  question.flags = NamesSelection(request) ? PD_SELECTION : PD_NOSELECTION;
  if (asked.fromPage != 0) question.fromPage = static_cast<WORD>(asked.fromPage);
  if (asked.toPage != kLastPage) question.toPage = static_cast<WORD>(asked.toPage);
  PrintOrder order = OrderOf(request);
  const LOGFONTA font = PrintFont();
  const HDC dc = StartPrintJob(FileTitle(order.Fname.c_str()), question);
  if (dc == nullptr) return;

  const PrintChoice choice = ChoiceOf(question);
  const PrintRange range =
      ChosenRange(asked, choice, question.fromPage, question.toPage, request.current, length);
  order.from = range.from;
  order.to = range.to;
  order.fromPage = range.fromPage;
  order.toPage = range.toPage;
  if (choice == PrintChoice::selection) order.SelStart = order.SelEnd = kNoPosition;
  PrintResult result;
  {
    Printer printer(dc, font);
    JobHost host(order.Fname);
    result = ComposePages(order, printer, host);
  }
  std::string reason;
  const int ended = EndPrintJob(IsKept(result), reason);
  TellResult(result, ended, reason);
}

LRESULT PrintCommand(UINT id) {
  const MainWindowState& state = MainState;
  const PrintTask& task = *std::ranges::find(kTasks, id, &PrintTask::id);
  const FilePos top = state.Lines.Aline[state.Lines.Acur].Lpos;
  PrintRequest request;
  request.options = state.PrintOptions | task.options;
  request.current = task.part == PrintTask::Part::all ? FilePos() : top;
  request.fromPage = task.fromPage;
  request.toPage = task.toPage;
  if (task.part == PrintTask::Part::selection) {
    request.from = state.SelStart;
    request.to = state.SelEnd;
  } else {
    request.from = request.current;
    request.to = task.part == PrintTask::Part::fromTop ? FilePos() : kNoPosition;
  }
  PrintFile(request);
  return 0;
}
