#include "engine/byte_source.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <new>

namespace {

class FileOrigin : public ByteOrigin {
 public:
  ~FileOrigin() override { FileClose(file_); }
  FileOrigin() = default;
  FileOrigin(const FileOrigin&) = delete;
  FileOrigin& operator=(const FileOrigin&) = delete;

  FileError Open(const char* name, ByteIdentity& identity) override {
    FileError error = 0;
    file_ = FileOpenShared(name, error);
    if (file_ == kNoFile) return error;
    FileFacts facts;
    error = FileAsk(file_, facts);
    if (error != 0) Close();
    identity = {facts.volume, facts.number, facts.changed, FilePos::At(facts.length)};
    return error;
  }
  FileError ReadAt(FilePos pos, std::uint8_t* to, std::size_t count, std::size_t& got) override {
    return FileReadAt(file_, pos.Offset(), to, count, got);
  }
  void Close() override {
    FileClose(file_);
    file_ = kNoFile;
  }

 private:
  FileHandle file_ = kNoFile;
};

constexpr std::intptr_t BlockOf(FilePos pos) {
  return pos.Offset() / kBlockBytes;
}
constexpr FilePos StartOf(std::intptr_t block) {
  return FilePos::At(block * kBlockBytes);
}

}  // namespace

std::unique_ptr<ByteOrigin> MakeFileOrigin() {
  return std::make_unique<FileOrigin>();
}

ByteSource::ByteSource(std::unique_ptr<ByteOrigin> origin) : origin_(std::move(origin)) {}

ByteSource::~ByteSource() {
  Close();
}

FileError ByteSource::Open(const char* path) {
  Close();
  identity_ = ByteIdentity{};
  failure_ = origin_->Open(path, identity_);
  open_ = failure_ == 0;
  identity_.length = std::max<FilePos>(identity_.length, 0);
  return failure_;
}

void ByteSource::Close() {
  if (open_) origin_->Close();
  open_ = false;
  first_ = end_ = base_ = 0;
}

std::uint8_t* ByteSource::Slot(BlockNumber block) {
  return window_.get() + (block - base_) * kBlockBytes;
}

// Moves the window so that the blocks `firstBlock` to `endBlock` - 1 have places in it. Of the blocks kept,
// those that still have a place, and that leave no hole, stay.
void ByteSource::MakeRoom(BlockNumber firstBlock, BlockNumber endBlock) {
  const bool apart = first_ == end_ || endBlock < first_ || firstBlock > end_;
  if (apart) {
    // The places below and above are for those who go on from here, in either direction.
    base_ = std::max<BlockNumber>(firstBlock - (kBlocksKept - (endBlock - firstBlock)) / 2, 0);
    first_ = end_ = firstBlock;
    return;
  }
  if (firstBlock >= base_ && endBlock <= base_ + kBlocksKept) return;
  const BlockNumber base = firstBlock < base_ ? firstBlock : endBlock - kBlocksKept;
  const BlockNumber first = std::max(first_, base);
  const BlockNumber end = std::min(end_, base + kBlocksKept);
  if (first < end) {
    std::memmove(window_.get() + (first - base) * kBlockBytes, Slot(first),
                 static_cast<std::size_t>((end - first) * kBlockBytes));
  }
  base_ = base;
  first_ = first < end ? first : firstBlock;
  end_ = first < end ? end : firstBlock;
}

// Reads one block, next to those kept. What the file lacks of it is found out here.
void ByteSource::ReadBlock(BlockNumber block) {
  const FilePos start = StartOf(block);
  const auto wanted = static_cast<std::size_t>(std::min<ByteCount>(kBlockBytes, Length() - start));
  std::size_t got = 0;
  failure_ = origin_->ReadAt(start, Slot(block), wanted, got);
  if (failure_ == 0 && got < wanted) identity_.length = start + got;
}

// Sees to it that the blocks are in the window, as far as the file has them. False after a failure.
bool ByteSource::Fetch(BlockNumber firstBlock, BlockNumber endBlock) {
  assert(endBlock - firstBlock <= kBlocksKept);
  if (window_ == nullptr) {
    window_.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>(kBlocksKept) * kBlockBytes]);
    if (window_ == nullptr) failure_ = kFileNoMemory;
  }
  if (failure_ != 0 || !open_) return false;
  MakeRoom(firstBlock, endBlock);
  while (failure_ == 0 && first_ > firstBlock) {
    ReadBlock(first_ - 1);
    if (failure_ == 0) --first_;
  }
  while (failure_ == 0 && end_ < endBlock && StartOf(end_) < Length()) {
    ReadBlock(end_);
    if (failure_ == 0) ++end_;
  }
  return failure_ == 0;
}

ByteView ByteSource::Piece(FilePos from, FilePos to) {
  return {Slot(BlockOf(from)) + (from - StartOf(BlockOf(from))), static_cast<std::int32_t>(to - from), from};
}

ByteView ByteSource::View(FilePos from, FilePos to) {
  from = std::clamp<FilePos>(from, 0, Length());
  to = std::clamp<FilePos>(to, from, std::min(Length(), from + kLargestView));
  if (from == to || !Fetch(BlockOf(from), BlockOf(to - 1) + 1)) return {nullptr, 0, from};
  to = std::min(to, Length());
  return from < to ? Piece(from, to) : ByteView{nullptr, 0, from};
}

ByteView ByteSource::ViewAround(FilePos from, FilePos to) {
  const ByteView asked = View(from, to);
  if (asked.count == 0) return asked;
  return Piece(StartOf(first_), std::min(StartOf(end_), Length()));
}

std::int32_t ByteSource::ReadInto(FilePos from, std::uint8_t* to, std::int32_t count) {
  if (failure_ != 0 || !open_ || from >= Length()) return 0;
  const auto wanted = static_cast<std::size_t>(std::min<ByteCount>(count, Length() - from));
  std::size_t got = 0;
  failure_ = origin_->ReadAt(from, to, wanted, got);
  if (failure_ == 0 && got < wanted) identity_.length = from + got;
  return static_cast<std::int32_t>(got);
}
