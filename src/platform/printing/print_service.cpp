#include "platform/printing/print_service.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "platform/printing/cups_library.h"

namespace platform_printing {

namespace {

constexpr int kConnectMs = 5000;
constexpr double kAskEverySeconds = 0.25;
constexpr auto kLookEvery = std::chrono::milliseconds(20);
constexpr auto kLongestStandstill = std::chrono::seconds(60);
constexpr auto kLongestCancel = std::chrono::seconds(3);
constexpr char kHold[] = "job-hold-until";
constexpr char kHeld[] = "indefinite";

using Clock = std::chrono::steady_clock;

// Nobody is asked for a password: a service that wants one refuses.
const char* NoPassword(const char*, http_t*, const char*, const char*, void*) {
  return nullptr;
}

// One wait for the service: how long, and who may end it earlier.
struct Patience {
  std::function<bool()> goOn;
  Clock::time_point deadline;
  bool onlyDeadline = false;  // who is asked cannot end it
  bool ended = false;         // a wait was given up, and what it waited for is lost

  void Renew(Clock::duration length = kLongestStandstill) { deadline = Clock::now() + length; }
};

int OnStandstill(http_t*, void* data) {
  auto& patience = *static_cast<Patience*>(data);
  const bool wanted = patience.goOn == nullptr || patience.goOn() || patience.onlyDeadline;
  if (!wanted || Clock::now() >= patience.deadline) patience.ended = true;
  return patience.ended ? 0 : 1;
}

// Runs `work` on a thread of its own, and asks `goOn` meanwhile. False when that, or the deadline, has ended
// the wait: the thread is left to itself then, so `work` owns all that it uses.
bool RunAside(const std::function<void()>& work, const std::function<bool()>& goOn,
              Clock::time_point deadline) {
  struct Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false;
  };
  const auto shared = std::make_shared<Shared>();
  std::thread([shared, work] {
    work();
    const std::lock_guard lock(shared->mutex);
    shared->done = true;
    shared->changed.notify_one();
  }).detach();
  std::unique_lock lock(shared->mutex);
  while (!shared->changed.wait_for(lock, kLookEvery, [&] { return shared->done; })) {
    lock.unlock();
    const bool wanted = goOn == nullptr || goOn();
    lock.lock();
    if (!shared->done && (!wanted || Clock::now() >= deadline)) return false;
  }
  return true;
}

// A connection to the service of the user's settings.
class Connection {
 public:
  Connection(const CupsLibrary& cups, Patience& patience) : cups_(cups) {
    cups.cupsSetPasswordCB2(NoPassword, nullptr);
    http_ = cups.httpConnect2(cups.cupsServer(), cups.ippPort(), nullptr, AF_UNSPEC, cups.cupsEncryption(), 1,
                              kConnectMs, nullptr);
    if (http_ != nullptr) cups.httpSetTimeout(http_, kAskEverySeconds, OnStandstill, &patience);
  }
  ~Connection() {
    if (http_ != nullptr) cups_.httpClose(http_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] http_t* Http() const { return http_; }

 private:
  const CupsLibrary& cups_;
  http_t* http_ = nullptr;
};

std::string TextOf(const char* text) {
  return text != nullptr ? text : "";
}

PrintQueue DescribeQueue(const CupsLibrary& cups, const cups_dest_t& dest) {
  const auto option = [&](const char* name) {
    return TextOf(cups.cupsGetOption(name, dest.num_options, dest.options));
  };
  PrintQueue queue;
  queue.name = dest.name;
  if (dest.instance != nullptr) queue.name += std::string("/") + dest.instance;
  queue.about = option("printer-info");
  queue.location = option("printer-location");
  queue.model = option("printer-make-and-model");
  queue.isDefault = dest.is_default != 0;
  queue.accepts = option("printer-is-accepting-jobs") != "false";
  return queue;
}

std::vector<PrintQueue> AskForQueues(const CupsLibrary& cups, int patienceMs) {
  Patience patience;
  patience.Renew(std::chrono::milliseconds(patienceMs));
  const Connection connection(cups, patience);
  std::vector<PrintQueue> queues;
  if (connection.Http() == nullptr) return queues;
  cups_dest_t* dests = nullptr;
  const int count = cups.cupsGetDests2(connection.Http(), &dests);
  for (int i = 0; i < count; ++i) {
    const PrintQueue queue = DescribeQueue(cups, dests[i]);
    queues.insert(queue.isDefault ? queues.begin() : queues.end(), queue);
  }
  cups.cupsFreeDests(count, dests);
  return queues;
}

}  // namespace

// The names of a server that does not exist can take long to be looked up, so the service is asked on a
// thread of its own, which is left to itself when the patience ends.
std::vector<PrintQueue> ListPrintQueues(int patienceMs) {
  const CupsLibrary* const cups = TheCupsLibrary();
  if (cups == nullptr) return {};
  const auto queues = std::make_shared<std::vector<PrintQueue>>();
  const bool told = RunAside([=] { *queues = AskForQueues(*cups, patienceMs); }, nullptr,
                             Clock::now() + std::chrono::milliseconds(patienceMs));
  return told ? std::move(*queues) : std::vector<PrintQueue>{};
}

std::string PrintServer() {
  const CupsLibrary* const cups = TheCupsLibrary();
  const std::string server = cups != nullptr ? TextOf(cups->cupsServer()) : std::string();
  return server.empty() || server.front() == '/' ? "localhost" : server;
}

struct PrintJobStream::Job {
  explicit Job(const CupsLibrary& library) : cups(library) {}
  ~Job() {
    cups.cupsFreeDestInfo(info);
    if (dest != nullptr) cups.cupsFreeDests(1, dest);
    cups.cupsFreeOptions(optionCount, options);
  }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;

  [[nodiscard]] http_t* Http() const { return connection != nullptr ? connection->Http() : nullptr; }
  [[nodiscard]] bool Connect();
  [[nodiscard]] bool FindQueue(const std::string& queue);
  [[nodiscard]] bool Knows(const char* name, const std::string& value) const;
  void TakeWishes(const PrintWishes& wishes);
  [[nodiscard]] bool Start(const std::string& title);
  // The answer to a request about the job; the caller deletes it. Null when the service gives none.
  [[nodiscard]] ipp_t* Request(ipp_op_t operation);
  [[nodiscard]] FileError Begin(const std::string& queue, const std::string& title,
                                const PrintWishes& wishes);
  void Cancel();
  [[nodiscard]] bool LetGo();
  [[nodiscard]] bool Stands();
  [[nodiscard]] bool IsCut() const;
  FileError Fail();

  const CupsLibrary& cups;
  Patience patience;
  std::unique_ptr<Connection> connection;
  cups_dest_t* dest = nullptr;
  cups_dinfo_t* info = nullptr;
  int optionCount = 0;
  cups_option_t* options = nullptr;
  int number = 0;
  std::atomic<bool> givenUp{false};  // before it had begun
  bool streaming = false;
  bool isHeld = false;
  std::string errorText;
};

bool PrintJobStream::Job::Connect() {
  patience.Renew();
  patience.ended = false;
  connection = std::make_unique<Connection>(cups, patience);
  return connection->Http() != nullptr;
}

bool PrintJobStream::Job::FindQueue(const std::string& queue) {
  const std::size_t slash = queue.find('/');
  const std::string name = queue.substr(0, slash);
  const std::string instance = slash == std::string::npos ? "" : queue.substr(slash + 1);
  dest = cups.cupsGetNamedDest(Http(), name.c_str(), instance.empty() ? nullptr : instance.c_str());
  info = dest != nullptr ? cups.cupsCopyDestInfo(Http(), dest) : nullptr;
  return info != nullptr;
}

bool PrintJobStream::Job::Knows(const char* name, const std::string& value) const {
  return cups.cupsCheckDestSupported(Http(), dest, info, name, value.c_str()) != 0;
}

void PrintJobStream::Job::TakeWishes(const PrintWishes& wishes) {
  PrintWishes known = wishes;
  if (!known.media.empty() && !Knows("media", known.media)) known.media.clear();
  if (!known.mediaSource.empty() && !Knows("media-source", known.mediaSource)) known.mediaSource.clear();
  for (const PrintAttribute& attribute : AttributesOf(known)) {
    // What a medium is made of was looked at above; the library cannot judge it as a whole.
    if (attribute.name == "media-col" || Knows(attribute.name.c_str(), attribute.value)) {
      optionCount =
          cups.cupsAddOption(attribute.name.c_str(), attribute.value.c_str(), optionCount, &options);
    }
  }
}

// The job is held until all of it has arrived: a service takes a connection that breaks off for the end of
// the document, and would print what came so far.
bool PrintJobStream::Job::Start(const std::string& title) {
  isHeld = Knows(kHold, kHeld);
  if (isHeld) optionCount = cups.cupsAddOption(kHold, kHeld, optionCount, &options);
  if (cups.cupsCreateDestJob(Http(), dest, info, &number, title.c_str(), optionCount, options) >
          IPP_STATUS_OK_EVENTS_COMPLETE ||
      number == 0) {
    return false;
  }
  streaming = cups.cupsStartDestDocument(Http(), dest, info, number, title.c_str(), CUPS_FORMAT_PDF, 0,
                                         nullptr, 1) == HTTP_STATUS_CONTINUE;
  return streaming;
}

ipp_t* PrintJobStream::Job::Request(ipp_op_t operation) {
  ipp_t* const request = cups.ippNewRequest(operation);
  const std::string uri = "ipp://localhost/jobs/" + std::to_string(number);
  cups.ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
  cups.ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
                    cups.cupsUser());
  return cups.cupsDoRequest(Http(), request, "/jobs/");
}

// The job is whole and may be printed.
bool PrintJobStream::Job::LetGo() {
  if (!isHeld) return true;
  cups.ippDelete(Request(IPP_OP_RELEASE_JOB));
  return cups.cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE && !patience.ended;
}

// Whether the service, which has all of the job, has not given it up.
bool PrintJobStream::Job::Stands() {
  ipp_t* const answer = Request(IPP_OP_GET_JOB_ATTRIBUTES);
  ipp_attribute_t* const found = cups.ippFindAttribute(answer, "job-state", IPP_TAG_ENUM);
  const int state = found != nullptr ? cups.ippGetInteger(found, 0) : IPP_JSTATE_PENDING;
  const bool stands = state != IPP_JSTATE_ABORTED && state != IPP_JSTATE_CANCELED;
  if (!stands) {
    errorText = "The print service has given the job up";
    ipp_attribute_t* const reasons = cups.ippFindAttribute(answer, "job-state-reasons", IPP_TAG_KEYWORD);
    for (int i = 0; reasons != nullptr && i < cups.ippGetCount(reasons); ++i)
      errorText += (i == 0 ? ": " : ", ") + TextOf(cups.ippGetString(reasons, i, nullptr));
  }
  cups.ippDelete(answer);
  return stands;
}

// The library does not tell each write that was given up or that failed, and goes on without the bytes.
bool PrintJobStream::Job::IsCut() const {
  return patience.ended || cups.httpError(Http()) != 0;
}

// Keeps the library's words for the error. What the number cannot tell, they do.
FileError PrintJobStream::Job::Fail() {
  const int broken = Http() != nullptr ? cups.httpError(Http()) : 0;
  if (patience.ended) {
    errorText = "The print service does not answer";
  } else if (cups.cupsLastError() > IPP_STATUS_OK_EVENTS_COMPLETE) {
    errorText = TextOf(cups.cupsLastErrorString());
  } else {
    errorText =
        "The print service has broken off" + (broken > 0 ? ": " + FileErrorText(broken) : std::string());
  }
  return EIO;
}

FileError PrintJobStream::Job::Begin(const std::string& queue, const std::string& title,
                                     const PrintWishes& wishes) {
  if (!Connect()) {
    errorText = TextOf(cups.cupsLastErrorString());
    return ECONNREFUSED;
  }
  if (!FindQueue(queue)) {
    errorText = TextOf(cups.cupsLastErrorString());
    return ENOENT;
  }
  TakeWishes(wishes);
  if (Start(title)) return 0;
  const FileError error = Fail();
  Cancel();
  return error;
}

// A document that is half sent blocks its connection: that one is cut, and another one tells the service.
void PrintJobStream::Job::Cancel() {
  if (number == 0) return;
  streaming = false;
  connection.reset();
  // Who gave the job up has no say in how long the service is told so.
  patience.onlyDeadline = true;
  if (Connect()) {
    patience.Renew(kLongestCancel);
    cups.cupsCancelJob2(Http(), dest->name, number, 0);
  }
  patience.onlyDeadline = false;
}

PrintJobStream::PrintJobStream() {
  if (const CupsLibrary* const cups = TheCupsLibrary()) job_ = std::make_shared<Job>(*cups);
}

PrintJobStream::~PrintJobStream() {
  if (job_ != nullptr && job_->streaming) Abort();
}

void PrintJobStream::WhileWaiting(std::function<bool()> goOn) {
  goOn_ = std::move(goOn);
}

FileError PrintJobStream::Begin(const std::string& queue, const std::string& title,
                                const PrintWishes& wishes) {
  if (job_ == nullptr) return ENOENT;
  job_->cups.cupsSetPasswordCB2(NoPassword, nullptr);  // it holds for one thread
  // The library goes on trying after a wait was given up, so all of it is left alone then.
  const auto error = std::make_shared<FileError>(0);
  const auto begin = [error, job = job_, queue, title, wishes] {
    *error = job->Begin(queue, title, wishes);
    if (job->givenUp) job->Cancel();
  };
  job_->patience.goOn = [&givenUp = job_->givenUp] { return !givenUp; };
  if (!RunAside(begin, goOn_, Clock::time_point::max())) {
    job_->givenUp = true;
    job_.reset();
    return ECANCELED;
  }
  job_->patience.goOn = goOn_;
  return *error;
}

FileError PrintJobStream::Write(const void* bytes, std::size_t count) {
  if (job_ == nullptr || !job_->streaming) return EIO;
  job_->patience.Renew();
  const auto answer = job_->cups.cupsWriteRequestData(job_->Http(), static_cast<const char*>(bytes), count);
  return answer == HTTP_STATUS_CONTINUE && !job_->IsCut() ? 0 : job_->Fail();
}

FileError PrintJobStream::Finish() {
  if (job_ == nullptr || !job_->streaming) return EIO;
  job_->patience.Renew();
  job_->streaming = false;
  const auto answer = job_->cups.cupsFinishDestDocument(job_->Http(), job_->dest, job_->info);
  if (answer <= IPP_STATUS_OK_EVENTS_COMPLETE && !job_->IsCut() && job_->LetGo())
    return job_->Stands() ? 0 : EIO;
  const FileError error = job_->Fail();
  Abort();
  return error;
}

void PrintJobStream::Abort() {
  if (job_ == nullptr || job_->number == 0) return;
  job_->streaming = false;
  job_->patience.goOn = nullptr;
  const auto asked = [this] {
    if (goOn_ != nullptr) static_cast<void>(goOn_());
    return true;
  };
  // One that is still told so goes on beside.
  if (!RunAside([job = job_] { job->Cancel(); }, asked, Clock::now() + kLongestCancel)) job_.reset();
}

std::string PrintJobStream::ErrorText() const {
  return job_ != nullptr ? job_->errorText : std::string();
}

}  // namespace platform_printing
