// The one door to the bytes of the viewed file: the loader, the search, the page index and the copy all read
// through it. It knows what the file was when the user's action began, keeps a few blocks of it for the
// length of that action, and holds it open no longer. The one idea: the blocks lie side by side in one window
// of memory, so that whoever formats or scans sees one piece of the file and never the borders of a read. One
// thread at a time; calls take as long as the disk does.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "engine/file_pos.h"
#include "platform/file.h"

// Bytes of one read, and the places in the file at which reads begin are multiples of it.
inline constexpr std::int32_t kBlockBytes = 65536;
// Blocks kept at most.
inline constexpr std::int32_t kBlocksKept = 5;
// The largest piece that can be seen at once, wherever it begins.
inline constexpr std::int32_t kLargestView = (kBlocksKept - 1) * kBlockBytes;

// What a file was at one moment. Two that are equal mean the same bytes, as far as a system tells.
struct ByteIdentity {
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  std::int64_t changed = 0;
  FilePos length = 0;
  bool operator==(const ByteIdentity&) const = default;
};

// Whether both are of the same file, whatever was added to it.
[[nodiscard]] constexpr bool IsSameFile(const ByteIdentity& a, const ByteIdentity& b) {
  return a.volume == b.volume && a.number == b.number;
}

// Where bytes come from. A new kind of source (a file on another machine, the output of an unpacker) is a new
// origin, and nothing else in the program changes.
class ByteOrigin {
 public:
  ByteOrigin() = default;
  virtual ~ByteOrigin() = default;
  ByteOrigin(const ByteOrigin&) = delete;
  ByteOrigin& operator=(const ByteOrigin&) = delete;

  // Opens what `name` means and tells what it is now. After a failure nothing is open.
  [[nodiscard]] virtual FileError Open(const char* name, ByteIdentity& identity) = 0;
  // As FileReadAt.
  [[nodiscard]] virtual FileError ReadAt(FilePos pos, std::uint8_t* to, std::size_t count,
                                         std::size_t& got) = 0;
  virtual void Close() = 0;
};

// Files of the system, by path.
[[nodiscard]] std::unique_ptr<ByteOrigin> MakeFileOrigin();

// A piece of the file in memory. Valid until the next call to its source.
struct ByteView {
  const std::uint8_t* bytes = nullptr;
  std::int32_t count = 0;
  FilePos from = 0;  // file offset of the first byte
  [[nodiscard]] FilePos End() const { return from + count; }
};

class ByteSource {
 public:
  explicit ByteSource(std::unique_ptr<ByteOrigin> origin = MakeFileOrigin());
  ~ByteSource();
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  // Begins an action on the file `path`: opens it and asks what it is. Nothing of an earlier action is kept.
  [[nodiscard]] FileError Open(const char* path);
  // Ends the action.
  void Close();

  [[nodiscard]] const ByteIdentity& Identity() const { return identity_; }
  // Bytes of the file as this action knows it: as many as there were at its beginning, or fewer when it
  // turned out on the way that the file has become shorter.
  [[nodiscard]] FilePos Length() const { return identity_.length; }
  // What went wrong first in this action; 0: nothing. Once a read has failed, all further ones do.
  [[nodiscard]] FileError Failure() const { return failure_; }

  // The bytes from `from` up to `to`, or as many of them as the file has; at most kLargestView. An empty view
  // behind the end, and after a failure.
  [[nodiscard]] ByteView View(FilePos from, FilePos to);

  // As View, but also gives what lies around the bytes asked for and costs nothing more.
  [[nodiscard]] ByteView ViewAround(FilePos from, FilePos to);

  // Copies bytes from `from` on into a buffer of the caller's, past the window: for those who walk the whole
  // file. Bytes got; fewer than `count` where the file ends or the read failed.
  [[nodiscard]] std::int32_t ReadInto(FilePos from, std::uint8_t* to, std::int32_t count);

 private:
  using BlockNumber = std::intptr_t;  // block n begins at n times kBlockBytes

  [[nodiscard]] bool Fetch(BlockNumber firstBlock, BlockNumber endBlock);
  void MakeRoom(BlockNumber firstBlock, BlockNumber endBlock);
  void ReadBlock(BlockNumber block);
  [[nodiscard]] std::uint8_t* Slot(BlockNumber block);
  [[nodiscard]] ByteView Piece(FilePos from, FilePos to);

  std::unique_ptr<ByteOrigin> origin_;
  std::unique_ptr<std::uint8_t[]> window_;
  ByteIdentity identity_;
  FileError failure_ = 0;
  bool open_ = false;
  // Blocks first_ to end_ - 1 are kept; block base_ has the window's first place.
  BlockNumber base_ = 0;
  BlockNumber first_ = 0;
  BlockNumber end_ = 0;
};
