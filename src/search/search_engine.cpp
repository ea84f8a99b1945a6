#include "search/search_engine.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <memory>
#include <new>

#include "marks/tag_list.h"
#include "search/byte_scan.h"

namespace {

// The data that is read starts at a cache line; what is carried from the slice before stands in front of it.
constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kCarriedBytes = kSearchKeyBytes;
constexpr std::size_t kBufferBytes = kCarriedBytes + kLineBytes + kSearchReadBytes;
static_assert(kBufferBytes <= 32760);

// A filter that stops the scan in vain more often than this within so many bytes costs more than choosing
// another one. A filter that asks three bytes already is given up less easily, since there may be no better.
constexpr std::int32_t kRefusedLimit = 256;
constexpr std::int32_t kRefusedLimitOfThree = 4096;
constexpr ByteCount kRefusedBytes = 1 << 20;

// One pass over the file, which gives the hits in ascending order.
class SearchPass {
 public:
  SearchPass(ByteSource& source, std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags,
             LongJob& job)
      : key_(MakeByteKey(key, keyLen, (flags & SEARCH_CASE) == 0)), source_(source), job_(job) {}

  // Begins at `from`. 0, or the negative result that ends the search.
  [[nodiscard]] FilePos Begin(FilePos from);

  // The next hit, or the negative result that ends the search.
  [[nodiscard]] FilePos NextHit();

 private:
  // Carries the bytes with which a hit across the border may begin, and reads on behind them. 0, or the
  // negative result that ends the search.
  [[nodiscard]] FilePos NextSlice();

  // Chooses another filter when the present one has proved bad.
  void ReviewFilter();

  ByteKey key_;
  ByteSource& source_;
  LongJob& job_;
  std::unique_ptr<std::uint8_t[]> buffer_;
  std::uint8_t* data_ = nullptr;   // where each read goes
  std::uint8_t* slice_ = nullptr;  // the bytes carried, and behind them those read
  std::int32_t have_ = 0;          // bytes of the slice
  std::int32_t next_ = 0;          // index in the slice at which the search goes on
  std::int32_t refused_ = 0;       // since the filter was reviewed
  FilePos reviewed_ = 0;           // the slice's file offset then
  FilePos start_ = 0;              // the slice's file offset
};

FilePos SearchPass::Begin(FilePos from) {
  start_ = reviewed_ = from;
  job_.end = source_.Length();
  buffer_.reset(new (std::nothrow) std::uint8_t[kBufferBytes]);
  if (buffer_ == nullptr) return kSearchNoMemory;
  void* place = buffer_.get() + kCarriedBytes;
  std::size_t room = kBufferBytes - kCarriedBytes;
  data_ = static_cast<std::uint8_t*>(std::align(kLineBytes, kSearchReadBytes, place, room));
  slice_ = data_;
  const FilePos status = NextSlice();
  if (status == 0) ChooseFilter(key_, slice_, have_);
  return status;
}

FilePos SearchPass::NextSlice() {
  const std::int32_t carried = std::min(have_, key_.length - 1);
  std::memmove(data_ - carried, slice_ + have_ - carried, static_cast<std::size_t>(carried));
  start_ += have_ - carried;
  slice_ = data_ - carried;
  have_ = carried;
  next_ = 0;
  const FilePos position = start_ + carried;
  job_.position.store(position, std::memory_order_relaxed);
  if (position >= source_.Length()) return kSearchNoHit;
  if (job_.stop.load(std::memory_order_relaxed)) return kSearchCanceled;
  const auto wanted = static_cast<std::int32_t>(kSearchReadBytes - position.Offset() % kSearchReadBytes);
  const std::int32_t got = source_.ReadInto(position, data_, wanted);
  if (got < 1) return source_.Failure() != 0 ? kSearchReadFailed : kSearchNoHit;
  have_ += got;
  return 0;
}

void SearchPass::ReviewFilter() {
  if (refused_ > (key_.asksThird ? kRefusedLimitOfThree : kRefusedLimit)) {
    ChooseFilter(key_, slice_, have_);
    key_.asksThird = true;
  } else if (start_ < reviewed_ + kRefusedBytes) {
    return;
  }
  refused_ = 0;
  reviewed_ = start_;
}

FilePos SearchPass::NextHit() {
  for (;;) {
    const std::int32_t hit = FindBytes(key_, slice_, have_, next_, refused_);
    if (hit >= 0) {
      next_ = hit + 1;
      return start_ + hit;
    }
    ReviewFilter();
    const FilePos status = NextSlice();
    if (status != 0) return status;
  }
}

// The negative result of a search that need not begin; 0 when it must.
FilePos RefuseSearch(const ByteSource& source, FilePos from, std::int32_t keyLen) {
  assert(from >= 0 && keyLen <= kSearchKeyBytes);
  if (from > source.Length() - keyLen) return kSearchNoHit;
  return keyLen < 1 ? kSearchNoKey : 0;
}

}  // namespace

bool SearchIsDefined(const SearchState& search) {
  return search.SearchFlags != 0 && search.SearchKeyLen != 0;
}

std::int32_t FindInBuffer(std::int32_t bufferLen, const std::uint8_t* buffer, std::int32_t keyLen,
                          const std::uint8_t* key, std::uint16_t flags) {
  if (bufferLen < keyLen) return -1;
  ByteKey prepared = MakeByteKey(key, keyLen, (flags & SEARCH_CASE) == 0);
  ChooseFilter(prepared, buffer, bufferLen);
  std::int32_t refused = 0;
  return FindBytes(prepared, buffer, bufferLen, 0, refused);
}

FilePos SearchFile(ByteSource& source, FilePos from, std::int32_t keyLen, const std::uint8_t* key,
                   std::uint16_t flags, LongJob& job) {
  if (const FilePos refusal = RefuseSearch(source, from, keyLen); refusal != 0) return refusal;
  SearchPass pass(source, keyLen, key, flags, job);
  const FilePos begun = pass.Begin(from);
  return begun == 0 ? pass.NextHit() : begun;
}

FindResult FindNext(ByteSource& source, const SearchState& search, FilePos paintedTop, FilePos selEnd,
                    LongJob& job) {
  FilePos from = search.SearchNext >= source.Length() ? 0 : search.SearchNext;
  if (from < 0) from = std::max(paintedTop, selEnd);
  FindResult result;
  result.hit = SearchFile(source, std::max<FilePos>(from, 0), search.SearchKeyLen, search.SearchKey,
                          search.SearchFlags, job);
  if (result.hit >= 0) {
    result.selStart = result.hit;
    result.selEnd = result.hit + search.SearchKeyLen;
    result.searchNext = kNoPosition;
  }
  return result;
}

bool HitIsOnScreen(const LineArray& lines, std::int32_t linesPerScreen, FilePos hit) {
  const std::int32_t last = std::min<std::int32_t>(lines.Acur + linesPerScreen, lines.Alast);
  return lines.Aline[lines.Acur].Lpos <= hit && hit < lines.Aline[last].Lpos;
}

FilePos MarkAll(ByteSource& source, const SearchState& search, std::vector<TagEntry>& tags,
                std::int16_t capacity, LongJob& job) {
  TagList marked{tags.data(), capacity, static_cast<std::int16_t>(tags.size())};
  tags.resize(static_cast<std::size_t>(capacity) + 1);
  marked.entries = tags.data();
  FilePos first = RefuseSearch(source, 0, search.SearchKeyLen);
  if (first == 0) {
    SearchPass pass(source, search.SearchKeyLen, search.SearchKey, search.SearchFlags, job);
    first = pass.Begin(0);
    if (first == 0) first = pass.NextHit();
    FilePos hit = first;
    while (hit >= 0) {
      TagInsert(marked, hit, kTagBySearch);
      if (marked.count >= marked.capacity) break;
      hit = pass.NextHit();
    }
    if (hit == kSearchCanceled || hit == kSearchReadFailed) first = hit;
  }
  tags.resize(static_cast<std::size_t>(marked.count));
  return first;
}
