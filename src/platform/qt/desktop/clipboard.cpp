#include <QApplication>
#include <QClipboard>
#include <cstdlib>

#include "platform/qt/base/unknown.h"
#include "platform/win32.h"

HGLOBAL GlobalAlloc(UINT flags, std::size_t bytes) {
  platform_qt::ReportUnknownBits("GlobalAlloc", flags, GMEM_MOVEABLE | GMEM_ZEROINIT);
  return std::calloc(bytes > 0 ? bytes : 1, 1);
}

void* GlobalLock(HGLOBAL block) {
  return block;
}

BOOL GlobalUnlock(HGLOBAL) {
  return FALSE;  // the lock count has come to zero
}

HGLOBAL GlobalFree(HGLOBAL block) {
  std::free(block);
  return nullptr;
}

BOOL OpenClipboard(HWND) {
  return TRUE;
}

BOOL EmptyClipboard() {
  QApplication::clipboard()->clear();
  return TRUE;
}

HANDLE SetClipboardData(UINT format, HANDLE block) {
  if (format != CF_UNICODETEXT) {
    platform_qt::ReportUnknown("SetClipboardData", format);
    return nullptr;
  }
  // Programs of this system expect a line feed at the end of a line.
  // A byte order mark in front, which is no text, is left out.
  QApplication::clipboard()->setText(
      QString::fromUtf16(static_cast<const char16_t*>(block)).replace("\r\n", "\n"));
  std::free(block);
  return QApplication::clipboard();  // tells success; nobody may use the block any more
}

BOOL CloseClipboard() {
  return TRUE;
}
