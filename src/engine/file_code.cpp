#include "engine/file_code.h"

#include "codes/detection.h"

ViewOptions FindFileCode(ByteSource& source) {
  const ByteView view = source.View(0, kDetectionBytes);
  if (view.count == 0 || source.Failure() != 0) return VO_AUTOCODE;
  const auto size = static_cast<std::size_t>(std::min(view.count, kDetectionBytes));
  switch (DetectCode({view.bytes, size}, FilePos::At(size) >= source.Length())) {
    case FoundCode::utf8:
      return VO_UTF8;
    case FoundCode::utf16le:
      return VO_UTF16LE;
    case FoundCode::utf16be:
      return VO_UTF16BE;
    case FoundCode::none:
      break;
  }
  return 0;
}
