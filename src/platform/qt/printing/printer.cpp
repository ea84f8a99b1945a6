// Device contexts of printers, and the documents that are drawn on them.
#include <cassert>
#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/printer.h"
#include "platform/printing/document_file.h"
#include "platform/printing/print_service.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/printing/page_target.h"
#include "platform/qt/printing/printers.h"

namespace platform_qt {

using namespace platform_printing;

namespace {

constexpr int kDone = 1;
// The abort procedure serves messages, which costs more than a page of text.
constexpr std::chrono::milliseconds kAskEvery{20};

std::string TextOf(const char* text) {
  return text != nullptr ? text : "";
}

class Printer : public PageTarget {
 public:
  Printer(bool toFile, std::string device, const DEVMODEA* mode)
      : PageTarget(PageFormatOf(mode)),
        toFile_(toFile),
        device_(std::move(device)),
        wishes_(WishesOf(mode)) {}

  [[nodiscard]] int Begin(HDC dc, const char* name);
  [[nodiscard]] int BeginPage(HDC dc);
  [[nodiscard]] int FinishPage(HDC dc);
  [[nodiscard]] int Finish(HDC dc);
  void Abort();
  void AskBy(ABORTPROC procedure) { procedure_ = procedure; }
  [[nodiscard]] std::string ErrorText() const;

 private:
  [[nodiscard]] bool GoesOn(HDC dc);
  [[nodiscard]] int CodeOf(FileError error) const;
  [[nodiscard]] FileError BeginQueue(HDC dc, const std::string& title);

  bool toFile_;
  std::string device_;
  std::string path_;  // of the file
  PrintWishes wishes_;
  ABORTPROC procedure_ = nullptr;
  std::chrono::steady_clock::time_point asked_;
  bool aborted_ = false;  // the procedure wants no more
  bool onPage_ = false;
  FileError error_ = 0;
  std::string queueError_;
  std::unique_ptr<ByteSink> sink_;
  PrintJobStream* stream_ = nullptr;  // the sink, where that is a queue
  std::unique_ptr<PdfDocument> document_;
};

// Asks the procedure, but not too often.
bool Printer::GoesOn(HDC dc) {
  const auto now = std::chrono::steady_clock::now();
  if (!aborted_ && procedure_ != nullptr && now - asked_ >= kAskEvery) {
    aborted_ = procedure_(dc, 0) == FALSE;
    asked_ = std::chrono::steady_clock::now();
  }
  return !aborted_;
}

int Printer::CodeOf(FileError error) const {
  if (aborted_) {
    return SP_APPABORT;
  }
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return SP_OUTOFDISK;
    case ENOMEM:
    case kFileNoMemory:
      return SP_OUTOFMEMORY;
    default:
      return SP_ERROR;
  }
}

FileError Printer::BeginQueue(HDC dc, const std::string& title) {
  auto stream = std::make_unique<PrintJobStream>();
  stream->WhileWaiting([this, dc] { return GoesOn(dc); });
  const FileError error = stream->Begin(device_, title, wishes_);
  queueError_ = stream->ErrorText();
  if (error == 0) {
    stream_ = stream.get();
    sink_ = std::move(stream);
  }
  return error;
}

int Printer::Begin(HDC dc, const char* name) {
  assert(document_ == nullptr);
  // What is no UTF-8 in the name of a document is shown as such.
  const std::string title = QString::fromUtf8(name).toStdString();
  if (toFile_) {
    const std::string path = AskForFile(name);
    if (path.empty()) {
      return SP_USERABORT;
    }
    auto file = std::make_unique<DocumentFile>();
    path_ = path;
    error_ = file->Begin(path);
    sink_ = std::move(file);
  } else {
    error_ = BeginQueue(dc, title);
  }
  if (error_ != 0) {
    sink_.reset();
    return CodeOf(error_);
  }
  document_ = std::make_unique<PdfDocument>(*sink_, kPageDotsPerInch, title);
  return kDone;
}

int Printer::BeginPage(HDC dc) {
  if (document_ == nullptr || !GoesOn(dc)) {
    return CodeOf(0);
  }
  document_->StartPage(Format().width, Format().height);
  onPage_ = true;
  DrawOn(document_.get());
  return kDone;
}

int Printer::FinishPage(HDC dc) {
  DrawOn(nullptr);
  if (document_ == nullptr || !std::exchange(onPage_, false)) {
    return CodeOf(error_);
  }
  error_ = document_->EndPage();
  return error_ == 0 && GoesOn(dc) ? kDone : CodeOf(error_);
}

int Printer::Finish(HDC /*dc*/) {
  if (document_ == nullptr) {
    return SP_ERROR;
  }
  error_ = document_->End();
  if (error_ == 0) {
    document_.reset();
    return kDone;
  }
  const int code = CodeOf(error_);
  Abort();
  return code;
}

void Printer::Abort() {
  DrawOn(nullptr);
  queueError_ = stream_ != nullptr ? stream_->ErrorText() : std::string();
  stream_ = nullptr;
  if (document_ != nullptr) {
    document_->Abort();
  }
  document_.reset();
  sink_.reset();
}

std::string Printer::ErrorText() const {
  const std::string words = stream_ != nullptr ? stream_->ErrorText() : queueError_;
  if (error_ == 0 || aborted_ || !words.empty()) {
    return error_ == 0 ? std::string() : words;
  }
  return (path_.empty() ? "" : path_ + ": ") + FileErrorText(error_);
}

Printer* PrinterOf(HDC dc) {
  return dc != nullptr ? dynamic_cast<Printer*>(dc->target) : nullptr;
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

HDC CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR /*output*/, const DEVMODEA* mode) {
  const bool toFile = TextOf(driver) == kFileDriver;
  if (TextOf(device).empty() || (!toFile && TextOf(driver) != kQueueDriver)) {
    return nullptr;
  }
  auto* const printer = new Printer(toFile, device, mode);
  return OpenDc(*printer, QRect(QPoint(0, 0), printer->Size()));
}

BOOL DeleteDC(HDC dc) {
  Printer* const printer = PrinterOf(dc);
  if (printer == nullptr) {
    return FALSE;
  }
  printer->Abort();
  CloseDc(dc);
  delete printer;
  return TRUE;
}

int StartDocA(HDC dc, const DOCINFOA* document) {
  assert(document->lpszOutput == nullptr);
  Printer* const printer = PrinterOf(dc);
  return printer != nullptr ? printer->Begin(dc, document->lpszDocName) : SP_ERROR;
}

int StartPage(HDC dc) {
  Printer* const printer = PrinterOf(dc);
  return printer != nullptr ? printer->BeginPage(dc) : SP_ERROR;
}

int EndPage(HDC dc) {
  Printer* const printer = PrinterOf(dc);
  return printer != nullptr ? printer->FinishPage(dc) : SP_ERROR;
}

int EndDoc(HDC dc) {
  Printer* const printer = PrinterOf(dc);
  return printer != nullptr ? printer->Finish(dc) : SP_ERROR;
}

int AbortDoc(HDC dc) {
  Printer* const printer = PrinterOf(dc);
  if (printer == nullptr) {
    return SP_ERROR;
  }
  printer->Abort();
  return kDone;
}

int SetAbortProc(HDC dc, ABORTPROC procedure) {
  Printer* const printer = PrinterOf(dc);
  if (printer == nullptr) {
    return SP_ERROR;
  }
  printer->AskBy(procedure);
  return kDone;
}

std::string PrinterErrorText(HDC dc) {
  const Printer* const printer = PrinterOf(dc);
  return printer != nullptr ? printer->ErrorText() : std::string();
}
