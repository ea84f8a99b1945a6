// Pages drawn on a device that keeps a record: what stands on them, where they break, and how a job ends.
#include "print/page_composition.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "engine/view_loader.h"
#include "tests/cell_text.h"
#include "tests/engine/format_pass.h"
#include "tests/memory_origin.h"

namespace {

struct Drawn {
  enum class Kind : std::uint8_t { heading, row, note } kind;
  int x, y;
  std::string text;
  PageShade shade;
  bool operator==(const Drawn&) const = default;
};
using Page = std::vector<Drawn>;

class RecordingDevice : public PageDevice {
 public:
  PageExtent Extent() override { return extent; }
  PageCell SelectFont(int height) override {
    fontHeight = height;
    return cell;
  }
  void StartPage() override { pages.emplace_back(); }
  std::int32_t EndPage() override { return static_cast<int>(pages.size()) == failsAt ? -4 : kPageSent; }
  void DrawRow(const RECT& rect, CellView text, PageShade shade) override {
    pages.back().push_back({Drawn::Kind::row, rect.left, rect.top, BytesOf(text), shade});
    EXPECT_EQ(rect.bottom - rect.top, cell.height);
    EXPECT_LE(rect.bottom, extent.height);
    EXPECT_LE(rect.right, extent.width);
  }
  void DrawNote(int x, int y, std::string_view text, PageShade shade) override {
    pages.back().push_back({Drawn::Kind::note, x, y, std::string(text), shade});
  }
  void DrawHeading(int x, int y, std::string_view text, PageShade shade) override {
    pages.back().push_back({Drawn::Kind::heading, x, y, std::string(text), shade});
  }
  int HeadingColumns(std::string_view text) override { return static_cast<int>(text.size()); }

  // The texts of each page, a bar between two, the heading in brackets.
  [[nodiscard]] std::string Shown() const {
    std::string shown;
    for (const Page& page : pages) {
      shown += '|';
      for (const Drawn& drawn : page) {
        shown += drawn.kind == Drawn::Kind::heading ? '[' + drawn.text + ']' : drawn.text + ' ';
      }
    }
    return shown;
  }

  PageExtent extent{400, 600, 100, 100};
  PageCell cell{100, 10};  // four rows of sixty
  int fontHeight = 0;
  int failsAt = 0;
  std::vector<Page> pages;
};

struct MemoryHost : PrintHost {
  explicit MemoryHost(MemoryFile& bytes) : file(bytes), source(std::make_unique<MemoryOrigin>(bytes)) {}
  std::shared_ptr<PrintBatch> Fetch(FilePos from, FilePos end, const ByteIdentity* begun,
                                    const LineStyle& style) override {
    ++fetches;
    std::shared_ptr<PrintBatch> batch = MakePrintBatch();
    if (source.Open("file") != 0) {
      batch->outcome = BatchOutcome::readFailed;
      return batch;
    }
    const FilePos first = begun != nullptr ? from : FirstPrintedRow(from, source, style);
    FillPrintBatch(*batch, first, end, begun != nullptr ? *begun : source.Identity(), source, style);
    source.Close();
    return batch;
  }
  void PageBegins(std::int32_t number, bool sent) override {
    status += (sent ? " +" : " -") + std::to_string(number);
    if (onPage) onPage(number);
  }
  bool Stopped() override { return stop; }

  MemoryFile& file;
  ByteSource source;
  std::function<void(int)> onPage;
  bool stop = false;
  int fetches = 0;
  std::string status;
};

constexpr PageShade kPlain{0, 0xFFFFFF};
constexpr PageShade kTag{1, 0xC0C0C0};
constexpr PageShade kTitle{2, 0xE0E0E0};
constexpr PageShade kComment{0xFFFFFF, 3};

PrintOrder OrderFor(const MemoryFile& file, std::uint32_t options, ViewOptions view = VO_FORMFEED) {
  PrintOrder order;
  order.Fname = "/folder/name";
  order.to = FilePos::At(file.bytes.size());
  order.options = options;
  order.style = {FormatText, view, 1};
  order.setup = {0, 0, 0, 0, 0};
  order.text = kPlain;
  order.tag = kTag;
  order.heading = kTitle;
  order.comment = kComment;
  order.stamp = "1/2/03  4:05";
  return order;
}

struct Job {
  explicit Job(std::string bytes, std::uint32_t options = 0, ViewOptions view = VO_FORMFEED)
      : file{std::move(bytes)}, host(file), order(OrderFor(file, options, view)) {}
  PrintResult Print() { return ComposePages(order, device, host); }
  std::string Shown() {
    Print();
    return device.Shown();
  }
  MemoryFile file;
  RecordingDevice device;
  MemoryHost host;
  PrintOrder order;
};

TEST(PageComposition, FormFeedsEndPages) {
  const struct {
    const char* bytes;
    const char* ejected;
    const char* kept;
  } cases[] = {{"a\nb\n", "|a b ", "|a b "},
               {"a\nb\nc\nd\ne\n", "|a b c d |e ", "|a b c d |e "},
               {"\fa\nb\n", "|a b ", "|a b "},
               {"a\n\fb\n", "|a |b ", "|a b "},
               {"a\fb\n", "|a |b ", nullptr},
               {"a\n\f\fb\n", "|a |b ", nullptr},
               {"a\n\f\f\fb\n", "|a | |b ", nullptr},
               {"a\f\n\fb", "|a | |b  [Incomplete Line...] ", nullptr},
               {"\f", "|  [Incomplete Line...] ", nullptr},
               {"", "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(Job(c.bytes, PO_EJECT_ON_FF).Shown(), c.ejected) << c.bytes;
    if (c.kept != nullptr) EXPECT_EQ(Job(c.bytes).Shown(), c.kept) << c.bytes;
  }
}

TEST(PageComposition, HeadingsTitlesAndShades) {
  Job job("one\ntwo\nthree\n", PO_DATE_TIME | PO_PAGE_NUMBER | PO_FILE_NAME | PO_PAGE_TITLES);
  job.device.extent.height = 600;
  job.order.titles = {CellsOfUtf8("T")};
  EXPECT_EQ(job.Shown(), "|[name][1/2/03  4:05  Page 1  ]T one two three ");
  const Page& page = job.device.pages[0];
  EXPECT_EQ(page[0], (Drawn{Drawn::Kind::heading, 0, 0, "name", kPlain}));
  EXPECT_EQ(page[1].x, 600 - 220) << "ends at the right edge";
  EXPECT_EQ(page[2], (Drawn{Drawn::Kind::row, 0, 200, "T", kPlain}));
  EXPECT_EQ(job.device.fontHeight, 14);

  Job path("x\n", PO_FULL_PATH | PO_FILE_NAME | PO_PAGE_NUMBER);
  path.order.Fname = "/" + std::string(60, 'f') + "/name.txt";
  EXPECT_EQ(path.Shown(), "|[..." + std::string(38, 'f') + "/name.txt][Page 1  ]x ");

  Job shades("one\ntwo\nthree\nfour\n", PO_SHADE_TAGS | PO_SHADE_SELECTION);
  shades.order.tags = {{5, 2}, {9, 1}};
  shades.order.SelStart = 8;
  shades.order.SelEnd = 14;
  shades.Print();
  const Page& shaded = shades.device.pages.at(0);
  EXPECT_EQ(shaded[0].shade, kPlain);
  EXPECT_EQ(shaded[1].shade, kTag);
  EXPECT_EQ(shaded[2].shade, (PageShade{0xFFFFFE, 0x3F3F3F})) << "the tag's shade, inverted";
  EXPECT_EQ(shaded[3].shade, kPlain) << "the selection ends where the line begins";

  Job tags("one\ntwo\n\fthree\nfour\n", PO_SHADE_TAGS | PO_TAGS_ONLY | PO_EJECT_ON_FF);
  tags.order.tags = {{5, 2}, {16, 1}};
  EXPECT_EQ(tags.Shown(), "|two |four ");
  EXPECT_EQ(tags.device.pages[0][0], (Drawn{Drawn::Kind::row, 0, 0, "two", kPlain}));
}

TEST(PageComposition, JobsThatEndOtherwise) {
  const std::string lines = "1\n2\n3\n4\n5\n6\n7\n8\n9\n";
  const auto result = [](Job& job) {
    const PrintResult ended = job.Print();
    return std::pair(ended.failure, ended.pages);
  };
  const auto is = [](PrintFailure failure, int pages) { return std::pair(failure, pages); };

  Job narrow(lines);
  narrow.order.setup.MarginTop = 101;
  EXPECT_EQ(result(narrow), is(PrintFailure::margins, 0));
  narrow.order.setup.MarginTop = 100;
  EXPECT_EQ(result(narrow), is(PrintFailure::none, 3)) << "three lines are enough";

  Job titles(lines, PO_PAGE_TITLES);
  titles.order.titles = {4, CellsOfUtf8("a")};
  EXPECT_EQ(result(titles), is(PrintFailure::titles, 1));

  Job failing(lines);
  failing.device.failsAt = 2;
  EXPECT_EQ(failing.Print().status, -4);
  EXPECT_EQ(failing.device.pages.size(), 2U);

  Job hex(lines);
  hex.order.style.format = FormatHex;
  hex.device.extent.width = 301;  // thirty columns, less the margin
  hex.order.setup.MarginLeft = 1;
  hex.device.cell = {90, 20};
  EXPECT_EQ(result(hex), is(PrintFailure::format, 0));

  Job dump("abcd\fefgh\f", PO_EJECT_ON_FF);
  dump.order.style.format = FormatHex;
  EXPECT_EQ(result(dump), is(PrintFailure::none, 1)) << "a form feed is a byte there";

  std::string many;
  for (int i = 0; i < 20'000; ++i)
    many += std::to_string(i) + '\n';
  const auto onPageTwo = [&](const std::function<void(Job&)>& fault) {
    Job job(many);
    job.host.onPage = [&](int number) {
      if (number == 2) fault(job);
    };
    return result(job);
  };
  const auto whole = is(PrintFailure::none, 5000);
  EXPECT_EQ(onPageTwo([](Job& job) { job.host.stop = true; }).first, PrintFailure::stopped);
  EXPECT_EQ(onPageTwo([](Job& job) { job.file.failure = EIO; }).first, PrintFailure::read);
  EXPECT_EQ(onPageTwo([](Job& job) { job.file.number = 2; }).first, PrintFailure::read) << "another file";
  EXPECT_EQ(onPageTwo([](Job& job) { job.file.bytes += "more\n"; }), whole) << "a log must come to its end";
  const auto shrunk = onPageTwo([](Job& job) { job.file.bytes.resize(100); });
  EXPECT_EQ(shrunk.first, PrintFailure::none);
  EXPECT_LT(shrunk.second, 5000);
}

// The rows of a format in one go. For lines that are not long.
std::vector<std::string> OneWalk(const std::string& bytes, const LineStyle& style) {
  PassLimits limits;
  limits.entries = 400'000;
  limits.textSize = 2'000'000;
  std::vector<std::string> rows;
  for (const PassLine& line :
       RunPass(style.format, bytes, 0, 0, FILL_FORWARD, style.options, style.lineLen, limits).lines)
    rows.push_back(line.text);
  return rows;
}

// The rows that a window shows, from view to view.
std::vector<std::string> RowsOfViews(MemoryFile& file, const LineStyle& style) {
  ByteSource source(std::make_unique<MemoryOrigin>(file));
  EXPECT_EQ(source.Open("file"), 0);
  std::vector<LineEntry> entries(kViewLines);
  std::vector<Cell> cells(300'000);
  LineArray lines{entries.data(), kViewLines};
  TextBuffer text{cells.data(), static_cast<std::int32_t>(cells.size())};
  ViewFile view;
  std::vector<std::string> rows;
  for (FilePos pos = 0; pos < source.Length(); pos = entries[static_cast<std::size_t>(lines.Alast)].Lpos) {
    EXPECT_EQ(LoadView({pos, -1, 50, 0, style}, source, view, lines, text), 0);
    for (auto i = static_cast<std::size_t>(lines.Acur); i < static_cast<std::size_t>(lines.Alast); ++i)
      rows.push_back(BytesOf(LineCells(entries[i], text)));
  }
  return rows;
}

// Whatever the paper, the format and the options: the rows on the pages are those of one walk over the whole
// file, each once, in their order; and pages of a range are those pages of the whole print.
TEST(PageComposition, RowsAreThoseOfTheFormats) {
  std::mt19937 random(11);
  const auto upTo = [&random](int most) {
    return static_cast<int>(random() % static_cast<unsigned>(most + 1));
  };
  for (int round = 0; round < 60; ++round) {
    std::string bytes;
    const int longest = round % 3 == 0 ? 30 : round % 3 == 1 ? 3000 : 100'000;
    while (bytes.size() < 150'000 && static_cast<int>(bytes.size()) < 3000 * longest)
      bytes += std::string(static_cast<std::size_t>(upTo(longest)), static_cast<char>('a' + upTo(25))) +
               (upTo(3) == 0 ? "\tq\r\n" : "\n");
    const FormatProc formats[] = {FormatText, FormatText, FormatHex, FormatRaw};
    const ViewOptions wraps = upTo(1) == 0 ? VO_WRAP : 0;
    const ViewOptions view = wraps | VO_FORMFEED | (upTo(1) == 0 ? VO_EXPANDTABS : 0);
    Job job(bytes, upTo(1) == 0 ? PO_PAGE_NUMBER : 0, view);
    job.order.style.format = formats[upTo(3)];
    job.device.cell = {20 + upTo(30), 8 + upTo(8)};
    job.device.extent = {400 + upTo(3000), 400 + upTo(4000), 100, 100};
    job.order.setup.MarginLeft = upTo(40);
    const int columns = (job.device.extent.width - job.order.setup.MarginLeft) / job.device.cell.width;
    const PrintResult printed = job.Print();
    ASSERT_EQ(printed.failure, PrintFailure::none);
    ASSERT_EQ(printed.pages, static_cast<int>(job.device.pages.size()));

    const ViewOptions digits = HexAddressOptions(job.order.to - 1, job.order.to);
    const LineStyle style{job.order.style.format, view | digits, columns};
    const std::vector<std::string> rows =
        longest > kViewText ? RowsOfViews(job.file, style) : OneWalk(bytes, style);
    std::size_t row = 0;
    for (const Page& page : job.device.pages) {
      for (const Drawn& drawn : page) {
        if (drawn.kind != Drawn::Kind::row) continue;
        ASSERT_LT(row, rows.size());
        ASSERT_EQ(drawn.text, rows[row]) << "round " << round << ", row " << row;
        ++row;
      }
    }
    EXPECT_EQ(row, rows.size());

    Job part(bytes, job.order.options, view);
    part.order = job.order;
    part.device.cell = job.device.cell;
    part.device.extent = job.device.extent;
    part.order.fromPage = 1 + upTo(printed.pages);
    part.order.toPage = part.order.fromPage + upTo(3);
    static_cast<void>(part.Print());
    std::vector<Page> wanted(job.device.pages.begin() + std::min(part.order.fromPage - 1, printed.pages),
                             job.device.pages.begin() + std::min(part.order.toPage, printed.pages));
    EXPECT_TRUE(part.device.pages == wanted) << round;
  }
}

}  // namespace
