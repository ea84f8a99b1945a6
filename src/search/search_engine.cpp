#include "search/search_engine.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <memory>
#include <new>

#include "marks/tag_list.h"
#include "search/byte_scan.h"
#include "search/text_key.h"

namespace {

// The data that is read starts at a cache line; what is carried from the slice before stands in front of it.
constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kCarriedBytes = 2 * kSearchKeyBytes;
constexpr std::size_t kBufferBytes = kCarriedBytes + kLineBytes + kSearchReadBytes;
static_assert(kBufferBytes <= 32760);

// A filter that stops the scan in vain more often than this within so many bytes costs more than choosing
// another one. A filter that asks three bytes already is given up less easily, since there may be no better.
constexpr std::int32_t kRefusedLimit = 256;
constexpr std::int32_t kRefusedLimitOfThree = 4096;
constexpr ByteCount kRefusedBytes = 1 << 20;

// Bytes of UTF-8 that are compared exactly are found as bytes.
bool NeedsTextKey(std::uint16_t flags) {
  const std::uint16_t code = flags & SEARCH_CODES;
  return code != 0 && !(code == VO_UTF8 && (flags & SEARCH_CASE) != 0);
}

// One pass over the file, which gives the hits in ascending order.
class SearchPass {
 public:
  SearchPass(ByteSource& source, std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags,
             LongJob& job)
      : key_(MakeByteKey(key, keyLen, (flags & SEARCH_CASE) == 0)), source_(source), job_(job) {
    if (!NeedsTextKey(flags)) return;
    text_ = std::make_unique<TextKey>(key, keyLen, flags & SEARCH_CODES, (flags & SEARCH_CASE) == 0,
                                      static_cast<std::int32_t>(kCarriedBytes));
    unit_ = (flags & VO_UTF8) != 0 ? 1 : 2;
    hasAnchor_ = text_->Anchor() != nullptr;
    if (hasAnchor_) key_ = *text_->Anchor();
  }

  // Begins at `from`. 0, or the negative result that ends the search.
  [[nodiscard]] FilePos Begin(FilePos from);

  // No slice is read that begins at `end` or behind it.
  void EndAt(FilePos end) { readEnd_ = end; }

  // The next hit, or the negative result that ends the search.
  [[nodiscard]] FilePos NextHit();

  // The bytes of the hit that NextHit gave last.
  [[nodiscard]] std::int32_t HitBytes() const { return hitBytes_; }

 private:
  // The next place at which the key, or the anchor of one of text, may stand; -1 when the slice has none.
  [[nodiscard]] std::int32_t NextCandidate();
  // Carries the bytes with which a hit across the border may begin, and reads on behind them. 0, or the
  // negative result that ends the search.
  [[nodiscard]] FilePos NextSlice();

  // Chooses another filter when the present one has proved bad.
  void ReviewFilter();

  [[nodiscard]] FilePos End();

  ByteKey key_;
  std::unique_ptr<TextKey> text_;  // null: a search for bytes
  bool hasAnchor_ = true;
  std::int32_t unit_ = 1;  // of the code: hits begin at multiples of it
  std::int32_t hitBytes_ = 0;
  bool ended_ = false;  // the slice is the last one
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
  FilePos readEnd_ = kBehindEveryPosition;
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
  if (status == 0 && hasAnchor_) ChooseFilter(key_, slice_, have_);
  return status;
}

FilePos SearchPass::NextSlice() {
  if (ended_) return kSearchNoHit;
  // What has not been tried, and what may stand in front of it.
  const std::int32_t untried = text_ != nullptr ? text_->MostBehind() : key_.length - 1;
  const std::int32_t before = text_ != nullptr ? text_->MostBefore() : 0;
  const std::int32_t carried = std::min(have_, untried + before);
  const std::int32_t next = carried - std::min(have_, untried);
  std::memmove(data_ - carried, slice_ + have_ - carried, static_cast<std::size_t>(carried));
  start_ += have_ - carried;
  slice_ = data_ - carried;
  have_ = carried;
  next_ = next;
  const FilePos position = start_ + carried;
  job_.position.store(position, std::memory_order_relaxed);
  if (position >= source_.Length() || position >= readEnd_) return End();
  if (job_.stop.load(std::memory_order_relaxed)) return kSearchCanceled;
  const auto wanted = static_cast<std::int32_t>(kSearchReadBytes - position.Offset() % kSearchReadBytes);
  const std::int32_t got = source_.ReadInto(position, data_, wanted);
  if (got < 1) return source_.Failure() != 0 ? kSearchReadFailed : End();
  have_ += got;
  return 0;
}

// A text may still stand in what was carried, with nothing behind it.
FilePos SearchPass::End() {
  ended_ = true;
  return text_ != nullptr && have_ > 0 ? 0 : kSearchNoHit;
}

std::int32_t SearchPass::NextCandidate() {
  if (text_ == nullptr) return FindBytes(key_, slice_, have_, next_, refused_);
  const std::int32_t known = hasAnchor_ ? key_.length - 1 : 0;
  const std::int32_t length = ended_ ? have_ : have_ - text_->MostBehind() + known;
  if (hasAnchor_) return FindBytes(key_, slice_, length, next_, refused_);
  for (std::int32_t i = next_; i < length; ++i)
    if (text_->MayBeginAt(slice_[i])) return i;
  return -1;
}

void SearchPass::ReviewFilter() {
  if (!hasAnchor_) return;
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
    const std::int32_t place = NextCandidate();
    if (place >= 0) {
      next_ = place + 1;
      TextKey::Hit hit{place, place + key_.length};
      if (text_ != nullptr && !text_->StandsAt(slice_, have_, place, hit)) continue;
      hitBytes_ = hit.end - hit.start;
      if ((start_ + hit.start).Offset() % unit_ == 0) return start_ + hit.start;
      continue;
    }
    ReviewFilter();
    const FilePos status = NextSlice();
    if (status != 0) return status;
  }
}

// The negative result of a search that need not begin; 0 when it must.
FilePos RefuseSearch(const ByteSource& source, FilePos from, std::int32_t keyLen, std::uint16_t flags) {
  assert(from >= 0 && keyLen <= kSearchKeyBytes);
  const std::int32_t least = NeedsTextKey(flags) ? std::min(keyLen, 1) : keyLen;
  if (from > source.Length() - least) return kSearchNoHit;
  return keyLen < 1 ? kSearchNoKey : 0;
}

struct Found {
  FilePos place;  // or the negative result
  std::int32_t bytes = 0;
};

Found FirstHit(ByteSource& source, FilePos from, std::int32_t keyLen, const std::uint8_t* key,
               std::uint16_t flags, LongJob& job) {
  if (const FilePos refusal = RefuseSearch(source, from, keyLen, flags); refusal != 0) return {refusal};
  SearchPass pass(source, keyLen, key, flags, job);
  const FilePos begun = pass.Begin(from);
  if (begun != 0) return {begun};
  const FilePos hit = pass.NextHit();
  return {hit, pass.HitBytes()};
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
  return FirstHit(source, from, keyLen, key, flags, job).place;
}

FindResult FindNext(ByteSource& source, const SearchState& search, FilePos paintedTop, FilePos selEnd,
                    LongJob& job) {
  FilePos from = search.SearchNext >= source.Length() ? 0 : search.SearchNext;
  if (from < 0) from = std::max(paintedTop, selEnd);
  FindResult result;
  const Found found = FirstHit(source, std::max<FilePos>(from, 0), search.SearchKeyLen, search.SearchKey,
                               search.SearchFlags, job);
  result.hit = found.place;
  if (result.hit >= 0) {
    result.selStart = result.hit;
    result.selEnd = result.hit + found.bytes;
    result.searchNext = kNoPosition;
  }
  return result;
}

std::vector<Hit> HitsBetween(ByteSource& source, const SearchState& search, FilePos from, FilePos to,
                             std::size_t most, LongJob& job) {
  std::vector<Hit> hits;
  if (RefuseSearch(source, from, search.SearchKeyLen, search.SearchFlags) != 0) return hits;
  SearchPass pass(source, search.SearchKeyLen, search.SearchKey, search.SearchFlags, job);
  pass.EndAt(to + static_cast<ByteCount>(kCarriedBytes));
  if (pass.Begin(from) != 0) return hits;
  for (FilePos hit = pass.NextHit(); hit >= 0 && hit < to && hits.size() < most; hit = pass.NextHit())
    hits.push_back({hit, hit + pass.HitBytes()});
  return hits;
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
  FilePos first = RefuseSearch(source, 0, search.SearchKeyLen, search.SearchFlags);
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
