// Lays the lines of a file out on pages: heading, titles, lines with their shades, form feeds. It walks the
// file in batches, with the view's formats and buffers of its own, so that a job takes the same memory
// whatever the file's size, and the view lives on beside it. Pages that are skipped are laid out like those
// that are sent, so that they break at the same places. Knows no window and no printer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "marks/tag_list.h"
#include "print/page_device.h"
#include "print/page_setup.h"
#include "print/print_batch.h"

// Bits of PrintOptions that a single job adds.
inline constexpr std::uint32_t PO_TAGS_ONLY = 0x1000;   // tagged lines alone
inline constexpr std::uint32_t PO_NO_DIALOG = 0x10000;  // on the printer chosen last, without a question
inline constexpr std::int32_t kLastPage = 0x7FFFFFFF;

// What is printed, and how: all that a job needs, as it was when the job began.
struct PrintOrder {
  std::string Fname;  // path of the file, UTF-8 or whatever the system has
  FilePos from = 0;   // lines from the one at `from` up to, not with, the one at `to`
  FilePos to = 0;
  std::int32_t fromPage = 1;  // of the pages that these lines make
  std::int32_t toPage = kLastPage;
  std::uint32_t options = 0;       // PO_ bits
  LineStyle style;                 // its length counts with VO_FIXEDLEN only; else the paper decides
  FilePos SelStart = kNoPosition;  // shaded with PO_SHADE_SELECTION
  FilePos SelEnd = kNoPosition;
  PageSetup setup;
  std::int32_t points = 10;   // of the font
  bool PrintMessages = true;  // notes at lines that are not whole
  PageShade text, tag, heading, comment;
  std::vector<TagEntry> tags;  // ascending
  std::vector<CellRow> titles;
  std::string stamp;  // date and time
};

enum class PrintFailure : std::uint8_t {
  none,
  stopped,  // by the user
  margins,  // leave less than three lines
  memory,
  titles,  // leave no line
  read,
  format,
  device,  // a page did not go out
};

struct PrintResult {
  std::int32_t pages = 0;  // that were sent
  PrintFailure failure = PrintFailure::none;
  std::int32_t status = 0;  // the device's reason
};

// Who runs a job.
class PrintHost {
 public:
  PrintHost() = default;
  virtual ~PrintHost() = default;
  PrintHost(const PrintHost&) = delete;
  PrintHost& operator=(const PrintHost&) = delete;

  // The next batch, as FillPrintBatch makes it; of a job's first, `begun` is null. Null: no memory.
  [[nodiscard]] virtual std::shared_ptr<PrintBatch> Fetch(FilePos from, FilePos end,
                                                          const ByteIdentity* begun,
                                                          const LineStyle& style) = 0;
  virtual void PageBegins(std::int32_t number, bool sent) = 0;
  // Whether the user wants the job to end. Asked at each page and each batch.
  [[nodiscard]] virtual bool Stopped() = 0;
};

// Prints the order. The device's document has begun, and its owner ends or aborts it afterwards.
[[nodiscard]] PrintResult ComposePages(const PrintOrder& order, PageDevice& device, PrintHost& host);
