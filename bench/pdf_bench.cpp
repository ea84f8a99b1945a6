// How fast pages of a log become PDF, how large a page is, and whether memory grows with the document.
//
//   pdf_bench [PAGES [FILE]]    pages of 60 lines of 126 characters; prints pages a second, bytes a page, and
//                               resident memory at page 100 and at the end. Without FILE nothing is kept.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/printing/document_file.h"
#include "platform/printing/page_font.h"
#include "platform/printing/pdf_document.h"

using namespace platform_printing;

namespace {

constexpr int kDotsPerInch = 600;
constexpr int kPageWidth = 4960;  // A4
constexpr int kPageHeight = 7016;
constexpr int kMargin = 200;
constexpr int kLinesOfPage = 60;
constexpr std::size_t kColumns = 126;
constexpr std::size_t kLinesOfPool = 6007;
constexpr int kFirstLook = 100;

std::u32string LogLine(std::mt19937& random) {
  static const char* const kWords[] = {"connection", "accepted", "from",   "request", "completed", "session",
                                       "cache",      "miss",     "retry",  "timeout", "reading",   "block",
                                       "closed",     "query",    "length", "index",   "rebuilt",   "queue"};
  char head[100];
  std::snprintf(head, sizeof head, "2024-03-%02u %02u:%02u:%02u.%03u INFO [worker-%02u] core.net.handler%u: ",
                static_cast<unsigned>(random() % 28 + 1), static_cast<unsigned>(random() % 24),
                static_cast<unsigned>(random() % 60), static_cast<unsigned>(random() % 60),
                static_cast<unsigned>(random() % 1000), static_cast<unsigned>(random() % 32),
                static_cast<unsigned>(random() % 9));
  std::string line = head;
  while (line.size() < kColumns - 12) {
    line += kWords[random() % std::size(kWords)];
    line += ' ';
  }
  std::snprintf(head, sizeof head, "id=%08x", static_cast<unsigned>(random()));
  line += head;
  line.resize(kColumns, '.');
  return {line.begin(), line.end()};
}

long ResidentKilobytes() {
  std::ifstream facts("/proc/self/status");
  for (std::string word; facts >> word;) {
    if (word != "VmRSS:") continue;
    long kilobytes = 0;
    facts >> kilobytes;
    return kilobytes;
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const int pages = count > 1 ? std::atoi(words[1]) : 5000;
  std::mt19937 random(1);
  std::vector<std::u32string> pool(kLinesOfPool);
  for (std::u32string& line : pool)
    line = LogLine(random);
  DocumentFile file;
  FontWish wish;
  wish.family = "Courier New";
  wish.emPixels = 58;
  const auto start = std::chrono::steady_clock::now();
  const auto font = PageFont::Make(wish);
  if (font == nullptr || file.Begin(count > 2 ? words[2] : "pdf_bench.pdf") != 0) return 1;
  PdfDocument document(file, kDotsPerInch, "pdf_bench");
  const FontMetrics& metrics = font->Metrics();
  long early = 0;
  std::size_t next = 0;
  for (int page = 0; page < pages; ++page) {
    if (page == kFirstLook) early = ResidentKilobytes();
    document.StartPage(kPageWidth, kPageHeight);
    for (int row = 0; row < kLinesOfPage; ++row) {
      const int y = kMargin + row * (metrics.ascent + metrics.descent);
      const PixelRect rect{kMargin, y, kPageWidth - kMargin, y + metrics.ascent + metrics.descent};
      document.Fill(rect, kPaperWhite);
      document.DrawRow(*font, kMargin, y, pool[next++ % kLinesOfPool], metrics.advance, {}, rect);
    }
    if (document.EndPage() != 0) return 1;
  }
  if (count > 2) {
    if (document.End() != 0) return 1;
  } else {
    document.Abort();
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  const long late = ResidentKilobytes();
  std::printf("%d pages: %.0f pages/s, %.0f bytes a page, resident %ld KB at page %d, %ld KB at the end\n",
              pages, pages / took.count(), static_cast<double>(document.BytesWritten()) / pages, early,
              kFirstLook, late);
  return 0;
}
