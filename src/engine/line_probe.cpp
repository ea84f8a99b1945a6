#include "engine/line_probe.h"

#include "engine/file_slice.h"
#include "engine/text_format.h"

namespace {

// Bytes on both sides of a place that tell, in all but odd files, where its line begins and ends.
constexpr std::int32_t kProbeBytes = 4096;

// What is known so far of the line around a place.
struct Extent {
  std::int32_t before = 0;  // bytes of the line in front of the place
  std::int32_t behind = 0;  // and from it on, the line break included
  bool startKnown = false;
  bool endKnown = false;
};

// Reads `bytes` around `at`, `ahead` of them behind it, and takes from them what is not known yet.
ViewStatus Look(ViewFile& file, std::uint8_t* work, FilePos at, std::int32_t bytes, std::int32_t ahead,
                Extent& extent) {
  file.Fcur = at;
  FileSlice slice;
  const ViewStatus status = ReadFileSlice(file, FileSlice{work, bytes, bytes - ahead}, slice);
  if ((status & VS_FAILED) != 0) return status;
  const std::int32_t here = std::min(slice.Soff, slice.Slen);
  const FilePos slicePos = at - slice.Soff;
  if (!extent.startKnown) {
    std::int32_t start = here;
    if (start > 0 && start < slice.Slen && IsBreakPair(work[start - 1], work[start])) --start;
    while (start > 0 && !IsLineBreak(work[start - 1]))
      --start;
    extent.startKnown = start > 0 || slicePos == 0;
    extent.before = here - start;
  }
  if (!extent.endKnown) {
    std::int32_t end = here;
    while (end < slice.Slen && !IsLineBreak(work[end]))
      ++end;
    extent.endKnown = end < slice.Slen || slicePos + slice.Slen >= file.Flen;
    if (end < slice.Slen) ++end;
    if (end > 0 && end < slice.Slen && IsBreakPair(work[end - 1], work[end])) ++end;
    extent.behind = end - here;
  }
  return 0;
}

}  // namespace

ViewStatus FindLine(ViewFile& file, std::uint8_t* work, FilePos at, ViewOptions options, LineAround& line) {
  const std::int32_t limit = LongLineLimit(options);
  Extent extent;
  ViewStatus status = Look(file, work, at, 2 * kProbeBytes, kProbeBytes, extent);
  if (status == 0 && !extent.startKnown) status = Look(file, work, at, kSliceBytes, 0, extent);
  if (status == 0 && extent.startKnown && !extent.endKnown && extent.before <= limit) {
    status = Look(file, work, at, kSliceBytes, kSliceBytes, extent);
  }
  if (status != 0) return status;
  const std::int32_t known = extent.before + extent.behind;
  line.start = at - extent.before;
  line.isLong = !extent.startKnown || known > limit || (!extent.endKnown && known >= limit);
  return 0;
}
