// Sends pages of text to a print queue: what the tests of print services print with. What it does is told on
// stdout, a line each.
//
//   print_client list
//   print_client print QUEUE PAGES [copies=N] [sides=two] [media=NAME] [source=NAME] [gray] [cancel=PAGES]
//                [pause=MS] [patience=MS]
//                cancel: gives the job up behind so many pages; pause: behind each page; patience: gives it
//                up when the service has not taken anything for so long
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

#include "platform/printing/page_font.h"
#include "platform/printing/pdf_document.h"
#include "platform/printing/print_service.h"

using namespace platform_printing;

namespace {

constexpr int kDotsPerInch = 600;
constexpr int kWidth = 4960;  // A4
constexpr int kHeight = 7016;
constexpr int kMargin = 300;
constexpr int kRows = 60;

struct Task {
  std::string queue;
  int pages = 1;
  int cancelBehind = -1;
  int pauseMs = 0;
  int patienceMs = 60000;
  PrintWishes wishes;
};

bool TakeWord(Task& task, const std::string& word) {
  const std::size_t mark = word.find('=');
  const std::string name = word.substr(0, mark);
  const std::string value = mark == std::string::npos ? "" : word.substr(mark + 1);
  if (name == "copies") {
    task.wishes.copies = std::atoi(value.c_str());
  } else if (name == "sides") {
    task.wishes.sides = Sides::twoLongEdge;
  } else if (name == "media") {
    task.wishes.media = value;
  } else if (name == "source") {
    task.wishes.mediaSource = value;
  } else if (name == "gray") {
    task.wishes.ink = Ink::gray;
  } else if (name == "cancel") {
    task.cancelBehind = std::atoi(value.c_str());
  } else if (name == "pause") {
    task.pauseMs = std::atoi(value.c_str());
  } else if (name == "patience") {
    task.patienceMs = std::atoi(value.c_str());
  } else {
    return false;
  }
  return true;
}

void DrawPage(PdfDocument& document, const PageFont& font, int page) {
  const FontMetrics& metrics = font.Metrics();
  const int height = metrics.ascent + metrics.descent;
  document.StartPage(kWidth, kHeight);
  for (int row = 0; row < kRows; ++row) {
    char text[64];
    std::snprintf(text, sizeof text, "page %d row %d of the printed text", page, row + 1);
    const std::string_view bytes = text;
    const int y = kMargin + row * height;
    document.DrawRow(font, kMargin, y, std::u32string(bytes.begin(), bytes.end()), metrics.advance, {},
                     {kMargin, y, kWidth - kMargin, y + height});
  }
}

int Fail(const PrintJobStream& job, const char* step, FileError error) {
  std::cout << step << " failed: " << FileErrorText(error) << ": " << job.ErrorText() << std::endl;
  return 1;
}

int Print(const Task& task) {
  FontWish wish;
  wish.family = "Courier New";
  wish.emPixels = 83;
  const auto font = PageFont::Make(wish);
  PrintJobStream job;
  auto lastMoved = std::chrono::steady_clock::now();
  job.WhileWaiting([&] {
    return std::chrono::steady_clock::now() - lastMoved < std::chrono::milliseconds(task.patienceMs);
  });
  const FileError begun = job.Begin(task.queue, "pages of a test", task.wishes);
  if (begun != 0) return Fail(job, "begin", begun);
  std::cout << "job " << job.JobNumber() << std::endl;
  PdfDocument document(job, kDotsPerInch, "pages of a test");
  for (int page = 1; page <= task.pages; ++page) {
    DrawPage(document, *font, page);
    if (const FileError error = document.EndPage()) return Fail(job, "page", error);
    lastMoved = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(task.pauseMs));
    if (page == task.cancelBehind) {
      document.Abort();
      std::cout << "canceled: stage " << static_cast<int>(job.Ask().stage) << std::endl;
      return 0;
    }
  }
  if (const FileError error = document.End()) return Fail(job, "end", error);
  const PrintJobState state = job.Ask();
  std::cout << "sent: stage " << static_cast<int>(state.stage) << " " << state.reasons << std::endl;
  return 0;
}

int List() {
  constexpr int kPatienceMs = 5000;
  for (const PrintQueue& queue : ListPrintQueues(kPatienceMs)) {
    std::cout << queue.name << (queue.isDefault ? " default" : "") << (queue.accepts ? "" : " closed") << ": "
              << queue.about << std::endl;
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  if (count == 2 && std::string(words[1]) == "list") return List();
  if (count < 4 || std::string(words[1]) != "print") return 2;
  Task task;
  task.queue = words[2];
  task.pages = std::atoi(words[3]);
  for (int i = 4; i < count; ++i) {
    if (!TakeWord(task, words[i])) return 2;
  }
  return Print(task);
}
