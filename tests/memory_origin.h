// A file that is only bytes in memory, for tests that look at what is read, or that read very often.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "engine/byte_source.h"

struct MemoryFile {
  std::string bytes;
  std::uint64_t number = 1;  // another one is another file
  std::int64_t changed = 0;
  FileError failure = 0;     // of every call, unless 0
  std::int64_t missing = 0;  // bytes that it says to have behind these and does not give
  std::int64_t opens = 0, reads = 0, bytesRead = 0;
};

class MemoryOrigin : public ByteOrigin {
 public:
  explicit MemoryOrigin(MemoryFile& file) : file_(file) {}
  FileError Open(const char* /*name*/, ByteIdentity& identity) override {
    ++file_.opens;
    identity = {1, file_.number, file_.changed, FilePos::At(std::ssize(file_.bytes) + file_.missing)};
    return file_.failure;
  }
  FileError ReadAt(FilePos pos, std::uint8_t* to, std::size_t count, std::size_t& got) override {
    const ByteCount size = file_.failure != 0 ? 0 : std::ssize(file_.bytes);
    got = static_cast<std::size_t>(
        std::clamp<ByteCount>(size - pos.Offset(), 0, static_cast<ByteCount>(count)));
    if (got > 0) std::memcpy(to, file_.bytes.data() + pos.Offset(), got);
    ++file_.reads;
    file_.bytesRead += static_cast<std::int64_t>(got);
    return file_.failure;
  }
  void Close() override {}

 private:
  MemoryFile& file_;
};
