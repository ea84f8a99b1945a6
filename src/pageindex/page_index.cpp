#include "pageindex/page_index.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "platform/temp_file.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array<std::uint8_t, 4> kMagic = {'Q', 'L', 'M', 0x1A};
constexpr std::int64_t kRecordBytes = 8;  // of a page, and of the header in front of them
constexpr std::int32_t kScanBlock = 128 * 1024;
// The header has 32 bits for the count, and a lookup takes it as signed. A file that needs more has 4 GB of
// line breaks and form feeds and nothing else; its further pages are left out.
constexpr PageNumber kMostPages = std::numeric_limits<std::int32_t>::max();
// A file that turns out to be another one more often than that does not keep still.
constexpr std::int32_t kMostRestarts = 3;

constexpr std::uint32_t kStopIcon = 16;  // as the numbers of beeps and of the icons of boxes
constexpr std::uint32_t kWarningIcon = 48;

constexpr const char* kStepCaption = "Quorl Page Indexing";
#define QUORL_PAGE_STEP_TEXT(what) what "\n\nPage indexing failed, [GoTo page] command will not be available"

constexpr PageIndexBox StartBox(const char* text) {
  return {"Program Error", text, kWarningIcon, kWarningIcon, true, false};
}
constexpr PageIndexBox StepBox(const char* text) {
  return {kStepCaption, text, 0, kNoBeep, false, false};
}

// In the order of PageIndexFault, from tempFile on.
constexpr PageIndexBox kBoxes[] = {
    StartBox("Cannot open temp file:\n%s"),
    StartBox("Cannot allocate file I/O buffer for page index."),
    StartBox("Index file write error:\n%s"),
    StepBox(QUORL_PAGE_STEP_TEXT("Error writing the page index file.")),
    StepBox(QUORL_PAGE_STEP_TEXT("Error updating the page index header.")),
    {"Program error", "PG_CONT while not PG_ACTIVE", kStopIcon, kStopIcon, true, false},
    {"Program error", "Unknown message code: %X", kStopIcon, kStopIcon, true, true},
    {"Program Error", "Index file corrupted.", kWarningIcon, kWarningIcon, false, false},
};
#undef QUORL_PAGE_STEP_TEXT
static_assert(std::size(kBoxes) == static_cast<std::size_t>(PageIndexFault::badHeader));

using Record = std::array<std::uint8_t, kRecordBytes>;

// Low word first, and within it the low byte first: the second word is the high half of the position.
Record MakeRecord(std::uint64_t number) {
  Record record;
  for (std::size_t i = 0; i < record.size(); ++i) {
    record[i] = static_cast<std::uint8_t>(number >> (8 * i));
  }
  return record;
}

std::uint64_t ReadNumber(const std::uint8_t* bytes, std::size_t count) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < count; ++i)
    number |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
  return number;
}

FileError WriteHeader(FileHandle index, PageNumber pageCount) {
  Record header = MakeRecord(static_cast<std::uint64_t>(pageCount) << 32);
  std::copy(kMagic.begin(), kMagic.end(), header.begin());
  return TempFileWriteAt(index, 0, header.data(), header.size());
}

void ReleaseFile(FileHandle& file) {
  FileClose(file);
  file = kNoFile;
}

// The outcomes that let a step get no further; both give false.
bool End(PageIndex& index, PageIndexFault fault) {
  ReleaseFile(index.build.index);
  index.build.block.reset();
  index.fault = fault;
  index.phase = PageIndexPhase::PG_IDLE;
  return false;
}
bool Pause(PageIndex& index, FileError error) {
  index.sourceError = error;
  index.phase = PageIndexPhase::PG_PAUSED;
  return false;
}

void Publish(PageIndex& index) {
  index.pageCount = index.build.pageCount;
  index.scanned = index.build.scanned;
}

// The phase that a step leaves.
void Settle(PageIndex& index) {
  const PageIndexBuild& build = index.build;
  const bool still = build.restarts - build.restartsAtFinish <= kMostRestarts;
  index.sourceError = 0;
  index.phase = build.finished ? PageIndexPhase::PG_DONE
                : still        ? PageIndexPhase::PG_ACTIVE
                               : PageIndexPhase::PG_PAUSED;
}

void KeepHead(PageIndexProbe& head, const std::uint8_t* bytes, std::int32_t count) {
  const std::int32_t taken = std::min(count, static_cast<std::int32_t>(head.bytes.size()) - head.count);
  std::copy_n(bytes, taken, head.bytes.begin() + head.count);
  head.count += taken;
}

void KeepTail(PageIndexProbe& tail, const std::uint8_t* bytes, std::int32_t count) {
  const auto size = static_cast<std::int32_t>(tail.bytes.size());
  const std::int32_t taken = std::min(count, size);
  const std::int32_t kept = std::min(tail.count, size - taken);
  std::copy_n(tail.bytes.begin() + (tail.count - kept), kept, tail.bytes.begin());
  std::copy_n(bytes + (count - taken), taken, tail.bytes.begin() + kept);
  tail.count = kept + taken;
}

// Forgets what is noted, and notes page 1.
bool StartAnew(PageIndex& index) {
  PageIndexBuild& build = index.build;
  const bool first = build.index == kNoFile;
  FileError error = 0;
  if (first) build.index = TempFileOpen(error);
  if (build.index == kNoFile) return End(index, PageIndexFault::tempFile);
  if (!first) ++build.restarts;
  build.scanned = 0;
  build.pageCount = 1;
  build.shortAt = -1;
  build.head.count = build.tail.count = 0;
  build.finished = false;
  const Record page = MakeRecord(0);
  if (TempFileEmpty(build.index) != 0 || WriteHeader(build.index, 0) != 0 ||
      TempFileWriteAt(build.index, kRecordBytes, page.data(), page.size()) != 0) {
    return End(index, PageIndexFault::indexWrite);
  }
  index.phase = PageIndexPhase::PG_ACTIVE;
  Publish(index);
  return true;
}

bool StillStands(ByteSource& source, FilePos from, const PageIndexProbe& probe) {
  std::array<std::uint8_t, sizeof probe.bytes> now;
  return source.ReadInto(from, now.data(), probe.count) == probe.count &&
         std::equal(now.begin(), now.begin() + probe.count, probe.bytes.begin());
}

// Whether what is noted holds for the file that is open. Only what made it longer is taken for an addition.
bool StillHolds(ByteSource& source, const PageIndexBuild& build) {
  if (build.scanned == 0) return true;
  const ByteIdentity& now = source.Identity();
  const bool grown = IsSameFile(now, build.known) && now.length > build.known.length;
  return (grown || now == build.known) && StillStands(source, 0, build.head) &&
         StillStands(source, build.scanned - build.tail.count, build.tail);
}

FileError OpenSource(ByteSource& source, const PageIndex& index) {
  const FileError error = source.Open(index.path.c_str());
  if (error != 0) return error;
  // Whoever adds to the file sets its time first and its length a moment later. A second look tells that from
  // a change in the middle.
  const ByteIdentity& now = source.Identity();
  const ByteIdentity& known = index.build.known;
  const bool onlyTime = IsSameFile(now, known) && now.length == known.length && now.changed != known.changed;
  return onlyTime && index.build.scanned > 0 ? source.Open(index.path.c_str()) : 0;
}

// Opens the viewed file, and starts anew where what is noted does not hold for it. False: no step now.
bool OpenIndexed(ByteSource& source, PageIndex& index) {
  PageIndexBuild& build = index.build;
  if (const FileError error = OpenSource(source, index); error != 0) return Pause(index, error);
  const ByteIdentity now = source.Identity();
  const bool holds = StillHolds(source, build);
  if (source.Failure() != 0) return Pause(index, source.Failure());
  index.length = now.length;
  if ((build.index == kNoFile || !holds) && !StartAnew(index)) return false;
  build.known = now;
  return true;
}

// Records on their way into the index file.
class PageRecords {
 public:
  explicit PageRecords(PageIndexBuild& build) : build_(build) {}

  [[nodiscard]] bool Append(FilePos position) {
    if (build_.pageCount >= kMostPages) return true;
    if (count_ == records_.size() && !Flush()) return false;
    ++build_.pageCount;
    records_[count_++] = MakeRecord(static_cast<std::uint64_t>(position.Offset()));
    return true;
  }

  [[nodiscard]] bool Flush() {
    const PageNumber first = build_.pageCount - static_cast<PageNumber>(count_) + 1;
    const std::size_t bytes = count_ * sizeof(Record);
    count_ = 0;
    return bytes == 0 || TempFileWriteAt(build_.index, first * kRecordBytes, records_.data(), bytes) == 0;
  }

 private:
  PageIndexBuild& build_;
  std::array<Record, 512> records_;
  std::size_t count_ = 0;
};

// A unit of UTF-16.
std::uint32_t UnitOf(std::uint8_t first, std::uint8_t second, TextUnit unit) {
  return unit == TextUnit::utf16le ? first | std::uint32_t{second} << 8 : second | std::uint32_t{first} << 8;
}

// Records the pages that start in the first `count` bytes of the block.
bool RecordPages(PageIndexBuild& build, std::int32_t count, TextUnit unit) {
  PageRecords records(build);
  const PageIndexProbe& tail = build.tail;
  const std::uint8_t* const begin = build.block.get();
  // Also of the bytes in front of the block, which the tail holds.
  const auto byteAt = [&](std::ptrdiff_t at) {
    return at >= 0 ? begin[at] : tail.bytes[static_cast<std::size_t>(tail.count + at)];
  };
  const auto pageStarts = [&](std::ptrdiff_t at) {
    if (unit == TextUnit::byte) return at + tail.count > 0 && IsLineBreak(byteAt(at - 1));
    const bool isWhole = at + tail.count >= 2 && at + 2 <= count && (build.scanned + at).Offset() % 2 == 0;
    return isWhole && UnitOf(byteAt(at), byteAt(at + 1), unit) == '\f' &&
           IsLineBreak(UnitOf(byteAt(at - 2), byteAt(at - 1), unit));
  };
  // A unit that the block's end cuts is looked at with the next block.
  const bool cut = unit == TextUnit::utf16le && tail.count > 0 && byteAt(-1) == '\f';
  if (cut && pageStarts(-1) && !records.Append(build.scanned - 1)) return false;
  const std::ptrdiff_t before = unit == TextUnit::utf16be ? 1 : 0;
  const std::uint8_t* const end = begin + count;
  const std::uint8_t* place = begin;
  const auto nextFormFeed = [&] {
    place = static_cast<const std::uint8_t*>(std::memchr(place, '\f', static_cast<std::size_t>(end - place)));
    return place != nullptr;
  };
  for (; nextFormFeed(); ++place) {
    const std::ptrdiff_t at = place - begin - before;
    if (pageStarts(at) && !records.Append(build.scanned + at)) return false;
  }
  return records.Flush();
}

// Notes what is in the first `count` bytes of the block. A finished index is one under way again.
bool TakeBlock(PageIndex& index, std::int32_t count) {
  PageIndexBuild& build = index.build;
  if (build.finished && WriteHeader(build.index, 0) != 0) return End(index, PageIndexFault::headerWrite);
  build.finished = false;
  index.phase = PageIndexPhase::PG_ACTIVE;
  if (!RecordPages(build, count, index.unit)) return End(index, PageIndexFault::recordWrite);
  KeepHead(build.head, build.block.get(), count);
  KeepTail(build.tail, build.block.get(), count);
  build.scanned += count;
  Publish(index);
  return true;
}

bool Finish(PageIndex& index) {
  PageIndexBuild& build = index.build;
  build.block.reset();
  if (build.finished) return true;
  if (WriteHeader(build.index, build.pageCount) != 0) return End(index, PageIndexFault::headerWrite);
  build.finished = true;
  build.restartsAtFinish = build.restarts;
  return true;
}

bool IsSet(const std::atomic<bool>* flag) {
  return flag != nullptr && flag->load(std::memory_order_relaxed);
}

// How far to scan.
struct ScanGoal {
  ByteCount bytes = std::numeric_limits<ByteCount>::max();  // so many, whatever the clock says,
  Clock::time_point until;                                  // and then on up to here,
  PageNumber pages = kMostPages + 1;                        // but no more once there are so many pages,
  const std::atomic<bool>* stop = nullptr;                  // or this is set
};

bool HasReached(const ScanGoal& goal, const PageIndexBuild& build, ByteCount done) {
  return build.pageCount >= goal.pages || IsSet(goal.stop) ||
         (done >= goal.bytes && Clock::now() >= goal.until);
}

// Scans on in the open file up to the goal or the end. False after a failure or a fault.
bool Scan(ByteSource& source, PageIndex& index, const ScanGoal& goal) {
  PageIndexBuild& build = index.build;
  const FilePos begin = build.scanned;
  while (build.scanned < source.Length()) {
    const ByteCount done = build.scanned - begin;
    if (HasReached(goal, build, done)) return true;
    if (build.block == nullptr) build.block.reset(new (std::nothrow) std::uint8_t[kScanBlock]);
    if (build.block == nullptr) return End(index, PageIndexFault::noMemory);
    const ByteCount wanted =
        done < goal.bytes ? std::min<ByteCount>(goal.bytes - done, kScanBlock) : kScanBlock;
    const std::int32_t count =
        source.ReadInto(build.scanned, build.block.get(), static_cast<std::int32_t>(wanted));
    if (count > 0 && !TakeBlock(index, count)) return false;
    if (source.Failure() != 0) return Pause(index, source.Failure());
  }
  // A file that ends before the length it gave has been cut just now, which the next open sees, or gives a
  // wrong length always, as those do that a system makes up when they are read.
  const bool isShort = build.scanned < build.known.length;
  const bool cut = isShort && build.shortAt != build.scanned;
  build.shortAt = isShort ? build.scanned : -1;
  return cut || Finish(index);
}

// Where the index says that the page stands, if a page does start there in the open file; else kPageNone.
FilePos LookUpNow(ByteSource& source, PageIndex& index, PageNumber page) {
  PageIndexFault fault = PageIndexFault::none;
  const FilePos position = PageIndexLookup(index.build.index, page, index.build.pageCount, fault);
  if (position < 0 || page == 1) return position;
  std::array<std::uint8_t, 4> bytes{};
  const std::int32_t width = UnitBytes(index.unit);
  const std::int32_t read =
      position >= FilePos::At(width) ? source.ReadInto(position - width, bytes.data(), 2 * width) : 0;
  if (source.Failure() != 0) {
    Pause(index, source.Failure());
    return kPageReadFailed;
  }
  const bool isByte = index.unit == TextUnit::byte;
  const std::uint32_t former = isByte ? bytes[0] : UnitOf(bytes[0], bytes[1], index.unit);
  const std::uint32_t first = isByte ? bytes[1] : UnitOf(bytes[2], bytes[3], index.unit);
  return read == 2 * width && IsLineBreak(former) && first == '\f' ? position : kPageNone;
}

// Each turn looks at the file as it is by then. A place is given in a turn that scanned nothing, so that it
// was noted for the file that is open.
FilePos FindPage(ByteSource& source, PageIndex& index, PageNumber page, const std::atomic<bool>& stop) {
  PageIndexBuild& build = index.build;
  ScanGoal goal;
  goal.pages = page;
  goal.stop = &stop;
  const std::int32_t restartsBefore = build.restarts;
  std::int32_t endedAt = -1;  // build.restarts when a turn came to the end
  while (build.restarts - restartsBefore <= kMostRestarts) {
    if (stop) return kPageStopped;
    if (!OpenIndexed(source, index)) break;
    const FilePos before = build.scanned;
    if (!Scan(source, index, goal)) break;
    Settle(index);
    // Whoever adds to the file all the time does not keep us here: the second end counts.
    const bool atEnd = build.finished && (build.scanned == before || endedAt == build.restarts);
    const bool missing = build.pageCount < page;
    if (missing && atEnd) return kPageNone;
    if (build.finished) endedAt = build.restarts;
    if (missing || build.scanned != before) continue;
    const FilePos position = LookUpNow(source, index, page);
    if (position != kPageNone) return position;
    if (!StartAnew(index)) break;
  }
  return index.phase == PageIndexPhase::PG_IDLE ? kPageNoIndex : kPageReadFailed;
}

}  // namespace

PageIndex::PageIndex(std::string file, TextUnit textUnit) : path(std::move(file)), unit(textUnit) {}

PageIndex::~PageIndex() {
  ReleaseFile(build.index);
}

void PageIndexStep(ByteSource& source, PageIndex& index, const PageStepLimits& limits) {
  if (index.phase == PageIndexPhase::PG_IDLE || IsSet(limits.stop)) return;
  ScanGoal goal;
  goal.bytes = std::max(limits.leastBytes, 1);
  goal.until = Clock::now() + limits.budget;
  goal.stop = limits.stop;
  if (OpenIndexed(source, index) && Scan(source, index, goal)) Settle(index);
  source.Close();
}

FilePos PageIndexFind(ByteSource& source, PageIndex& index, PageNumber page, const std::atomic<bool>& stop) {
  if (index.phase == PageIndexPhase::PG_IDLE) return kPageNoIndex;
  if (page < 1 || page > kMostPages) return kPageNone;
  const FilePos found = FindPage(source, index, page, stop);
  source.Close();
  return found;
}

PageIndexPages PageIndexPagesOf(const PageIndex& index) {
  // The count is the last one only if the index was finished both before and behind the look at it.
  const PageIndexPhase phase = index.phase;
  if (phase == PageIndexPhase::PG_IDLE) return {};
  const PageNumber count = index.pageCount;
  return {count, phase != PageIndexPhase::PG_DONE || index.phase != PageIndexPhase::PG_DONE};
}

FilePos PageIndexLookup(FileHandle index, PageNumber page, PageNumber count, PageIndexFault& fault) {
  if (index == kNoFile) return kPageNoIndex;
  if (page < 1) return kPageNone;
  Record record;
  const auto readRecord = [&](PageNumber number) {
    std::size_t got = 0;
    return FileReadAt(index, number * kRecordBytes, record.data(), record.size(), got) == 0 &&
           got == record.size();
  };
  if (count == 0) {
    if (!readRecord(0)) return kPageReadFailed;
    if (!std::equal(kMagic.begin(), kMagic.end(), record.begin())) {
      fault = PageIndexFault::badHeader;
      return kPageReadFailed;
    }
    count = static_cast<PageNumber>(ReadNumber(record.data() + kMagic.size(), 4));
  }
  if (count < page) return kPageNone;
  if (!readRecord(page)) return kPageReadFailed;
  const auto position = FilePos::At(ReadNumber(record.data(), record.size()));
  return position < 0 ? kPageReadFailed : position;
}

const PageIndexBox& PageIndexBoxOf(PageIndexFault fault) {
  assert(fault != PageIndexFault::none);
  return kBoxes[static_cast<std::size_t>(fault) - 1];
}

std::string PageIndexFaultText(PageIndexFault fault, std::uint32_t message, const char* path) {
  std::string text = PageIndexBoxOf(fault).text;
  std::string word;
  if (fault == PageIndexFault::unknownMessage) {
    char number[16];
    std::snprintf(number, sizeof number, "%X", static_cast<unsigned>(message));
    word = number;
  } else {
    word = fault == PageIndexFault::tempFile ? TempFolder() : path;
  }
  if (const std::size_t mark = text.find('%'); mark != std::string::npos) text.replace(mark, 2, word);
  return text;
}
