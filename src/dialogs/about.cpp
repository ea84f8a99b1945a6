#include "dialogs/about.h"

#include "dialogs/dialog.h"
#include "platform/program.h"
#include "resources/dialogs/about_dialog.h"
#include "resources/version.h"

// The day of the build; a package names the day of its release, so that it is built the same at any time.
#ifndef QUORL_BUILD_DATE
#define QUORL_BUILD_DATE __DATE__
#endif

namespace {

std::string VersionText() {
  return std::string("Version ") + kVersion + "   [" QUORL_BUILD_DATE "]";
}

class AboutDialog : public Dialog {
 public:
  explicit AboutDialog(HICON icon) : Dialog(about_dialog::kTemplate), icon_(icon) {}

 protected:
  bool Start() override {
    SetDlgItemTextA(Window(), about_dialog::kVersion, VersionText().c_str());
    SetDlgItemTextA(Window(), about_dialog::kLibraries, ProgramLibraries().c_str());
    Send(about_dialog::kIcon, STM_SETICON, reinterpret_cast<WPARAM>(icon_));
    return true;
  }

 private:
  HICON icon_;
};

}  // namespace

INT_PTR RunAbout(HWND owner, HICON icon) {
  return AboutDialog(icon).Run(owner);
}
