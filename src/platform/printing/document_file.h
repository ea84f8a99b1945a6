// A file that comes into being whole or not at all. Bytes go into a file aside, in the folder of the target,
// and take its place in Finish, when they are on the disk. Until then whatever stood there stays as it was.
// The file aside has no name where the system permits that, so that nothing is left behind however the
// process ends.
#pragma once

#include <string>

#include "platform/printing/byte_sink.h"

namespace platform_printing {

class DocumentFile : public ByteSink {
 public:
  DocumentFile() = default;
  ~DocumentFile() override { Abort(); }

  // Begins a file for `path`, the end of whose links is the target; it has the rights of a file that it will
  // replace. Refused (kFileOfWrongKind) where something else than a regular file stands, and where one stands
  // that the user may not write.
  [[nodiscard]] FileError Begin(const std::string& path);

  [[nodiscard]] FileError Write(const void* bytes, std::size_t count) override;
  [[nodiscard]] FileError Finish() override;
  void Abort() override;

 private:
  [[nodiscard]] FileError OpenAside();
  [[nodiscard]] FileError GiveName();

  std::string target_;
  std::string aside_;  // name of the file aside, empty while it has none
  int file_ = -1;
};

}  // namespace platform_printing
