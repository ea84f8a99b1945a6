#include "window/files/caption.h"

#include "platform/spool.h"
#include "window/main_window_state.h"
#include "window/notice.h"
#include "window/view_loading.h"

std::string FileTitle(const char* path) {
  return IsSpooledInput(path) ? "(standard input)" : BaseName(path);
}

void ShowFileCaption() {
  std::string caption = std::string(kProgramName) + " - " + FileTitle(MainState.File.Fname);
  const ViewOptions options = PresentOptions();
  if ((options & VO_UNICODE) != 0) caption += std::string(" - ") + kCodeNames[CodeInUse(options)];
  MainState.CaptionCode = options & VO_UNICODE;
  SetWindowTextA(MainState.MainWindow, caption.c_str());
}

void UpdateFileCaption() {
  if ((PresentOptions() & VO_UNICODE) != MainState.CaptionCode) ShowFileCaption();
}

void TellCode() {
  const std::int32_t code = MainState.CharCode;
  std::string notice = std::string("Code: ") + kCodeNames[code];
  if (code == kCodeAutomatic && MainState.File.Fname[0] != '\0') {
    notice += std::string(" (") + kCodeNames[CodeInUse(PresentOptions())] + ")";
  }
  ShowNotice(notice);
}
