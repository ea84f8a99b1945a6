#include "engine/file_slice.h"

#include <limits>

#include "platform/file.h"

namespace {

// Closes the file on every road out.
class OpenedFile {
 public:
  explicit OpenedFile(const char* path) : handle_(FileOpenShared(path)) {}
  ~OpenedFile() {
    if (handle_ != kNoFile) FileClose(handle_);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;

  [[nodiscard]] bool IsOpen() const { return handle_ != kNoFile; }
  [[nodiscard]] FileHandle Handle() const { return handle_; }

 private:
  FileHandle handle_;
};

}  // namespace

ViewStatus ReadFileSlice(ViewFile& file, const FileSlice& want, FileSlice& got) {
  const OpenedFile source(file.Fname);
  if (!source.IsOpen()) return VS_FAILED;
  const FilePos length = FileSize(source.Handle());
  if (length < 0) return VS_FAILED;
  file.Flen = length;

  got = want;
  FilePos before = want.Soff;  // bytes of the slice in front of Fcur
  FilePos start = file.Fcur - before;
  if (start < 0) {
    before += start;
    start = 0;
  }
  if (length - start < want.Slen) {
    const FilePos moved = std::max<FilePos>(length - want.Slen, 0);
    before += start - moved;
    start = moved;
  }
  // A file that shrank may leave Fcur further behind its end than the field can say.
  got.Soff = static_cast<std::int32_t>(std::min<FilePos>(before, std::numeric_limits<std::int32_t>::max()));

  ViewStatus status = 0;
  if (want.Slen > length - start) {
    status |= VS_SHORT;
    got.Slen = static_cast<std::int32_t>(length - start);
  }
  if (got.Slen <= 0) {
    got.Slen = 0;
    return status | VS_NODATA;
  }
  if (start > 0 && !FileSeek(source.Handle(), start)) return status | VS_FAILED;
  const std::int64_t read = FileRead(source.Handle(), got.Sbuf, static_cast<std::size_t>(got.Slen));
  if (read != got.Slen) return status | VS_FAILED;
  return status;
}

FilePos FileLength(const char* path) {
  const OpenedFile source(path);
  if (!source.IsOpen()) return 0;
  return std::max<FilePos>(FileSize(source.Handle()), 0);
}
