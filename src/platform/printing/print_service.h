// The system's print service: which queues it has, and jobs that are streamed to one of them. Its library is
// loaded at the first call, so that a program that does not print does not pay for it, and one on a system
// without it finds no queues. CUPS_SERVER and the user's settings of the service are honoured. Nothing here
// asks for a password or waits without an end. Every operation may be called on any thread; an object belongs
// to one thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/printing/byte_sink.h"

namespace platform_printing {

struct PrintQueue {
  std::string name;      // as PrintJobStream::Begin takes it; with "/instance" where the user made one
  std::string about;     // the administrator's words, UTF-8; may be empty
  std::string location;  // the same
  std::string model;
  bool isDefault = false;
  bool accepts = true;  // takes jobs now
};

// The queues of the service, the default one first; empty when there is no service, or it has not answered
// within `patienceMs`.
[[nodiscard]] std::vector<PrintQueue> ListPrintQueues(int patienceMs);

// The server that the user's settings name; "localhost" for the one of this machine.
[[nodiscard]] std::string PrintServer();

// What a queue is asked for. What is not set is left to the queue.
enum class Sides : std::uint8_t { unset, one, twoLongEdge, twoShortEdge };
enum class Turn : std::uint8_t { unset, portrait, landscape };
enum class Quality : std::uint8_t { unset, draft, normal, high };
enum class Ink : std::uint8_t { unset, gray, color };
struct PrintWishes {
  int copies = 1;
  Sides sides = Sides::unset;
  Turn turn = Turn::unset;  // of pages that stand upright in the document; wide pages need none
  Quality quality = Quality::unset;
  Ink ink = Ink::unset;
  std::string media;        // PWG 5101.1 name: "iso_a4_210x297mm"; empty: unset
  std::string mediaSource;  // IPP keyword: "tray-1", "manual"; empty: unset
  int dotsPerInch = 0;      // resolution; 0: unset
};

// A name and a value of RFC 8011.
struct PrintAttribute {
  std::string name;
  std::string value;
};

// The wishes as attributes of a job. Never page-ranges: which pages there are is the document's business.
[[nodiscard]] std::vector<PrintAttribute> AttributesOf(const PrintWishes& wishes);

// A PDF document on its way to a queue, as one job, which the service holds until all of it is there: nothing
// is printed in part. A program that ends in the middle leaves a held job.
class PrintJobStream : public ByteSink {
 public:
  PrintJobStream();
  ~PrintJobStream() override;

  // Asked a few times a second while the service does not take bytes or does not answer; false gives the job
  // up. Without one, and at the latest after a minute in which nothing moved, the wait ends by itself.
  void WhileWaiting(std::function<bool()> goOn);

  // Makes a job of the queue and begins its document. A wish that the queue does not know is left out. On an
  // error no job is left behind.
  [[nodiscard]] FileError Begin(const std::string& queue, const std::string& title,
                                const PrintWishes& wishes);

  [[nodiscard]] FileError Write(const void* bytes, std::size_t count) override;
  // The job is whole and let go. Also an error where the service has given it up by then.
  [[nodiscard]] FileError Finish() override;
  // Cancels the job with the service, whatever of it has arrived, also behind Finish. A service that does not
  // answer is left alone after some seconds; it drops what is half sent when it finds the connection cut.
  void Abort() override;

  // The service's own words for the last error, UTF-8; may be empty.
  [[nodiscard]] std::string ErrorText() const;

 private:
  struct Job;
  std::shared_ptr<Job> job_;  // null: there is no service, or it was left alone
  std::function<bool()> goOn_;
};

}  // namespace platform_printing
