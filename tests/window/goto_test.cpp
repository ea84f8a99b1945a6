// The Go To dialog and its command, in the running program.
#include <chrono>
#include <thread>

#include "resources/dialogs/goto_dialog.h"
#include "tests/window/dialog_steps.h"
#include "tests/window/viewer.h"

namespace {

using platform_testing::Beeps;
using platform_testing::Boxes;
using platform_testing::ControlState;
using platform_testing::StateOfControl;

using namespace dialog_steps;

class GoTo : public testing::Test {
 protected:
  static void Run(Viewer& viewer, std::vector<DialogStep> steps) {
    platform_testing::ForgetRecords();
    platform_testing::ScriptNextDialog(std::move(steps));
    viewer.Key(VK_F5);
  }
  static void Go(Viewer& viewer, int radio, const std::string& text) {
    Run(viewer, {Click(radio), Type(text), Click(IDOK)});
  }
  static void Index(Viewer& viewer) {
    for (int step = 0; step < 2000 && MainState.Pages.index->phase != PageIndexPhase::PG_DONE; ++step) {
      viewer.Send(PG_CONT);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  // 20 pages of 95 lines of 10 bytes.
  static std::string Pages() {
    std::string text;
    for (int line = 0; line < 1900; ++line) {
      char words[32];
      std::snprintf(words, sizeof words, "%cline%04d\n", line % 95 == 0 && line > 0 ? '\f' : ' ', line);
      text += words;
    }
    return text;
  }
  ScratchFile file{Pages()};
};

// A page that is not reached yet is waited for; the file is looked at as it then is.
TEST_F(GoTo, PageWhileTheIndexIsStillBuilding) {
  Viewer viewer({file.Path()});
  ControlState range;
  Run(viewer, {Click(goto_dialog::kPageNumber), Look(goto_dialog::kRange, range), Type("5"), Click(IDOK)});
  EXPECT_EQ(range.text, "1 to 1 so far");
  EXPECT_EQ(Viewer::Top(), FilePos::At(4 * 950));
  file.Append("\fpage 21\n");
  Go(viewer, goto_dialog::kPageNumber, "21");
  EXPECT_EQ(Viewer::Top(), FilePos::At(20 * 950));
  Index(viewer);
  Go(viewer, goto_dialog::kPageNumber, "22");
  EXPECT_EQ(Boxes().at(0).text, "Page Number must be a number between 1 and 21!");
  file.Write("one\n\ftwo\n\fthree\n");
  Go(viewer, goto_dialog::kPageNumber, "3");
  EXPECT_EQ(Viewer::Top(), FilePos::At(9)) << "never by the index of the former content";
}

TEST_F(GoTo, PagesNeedAnIndex) {
  Viewer viewer({file.Path()});
  viewer.Send(PG_STOP);
  ControlState page;
  Run(viewer, {Look(goto_dialog::kPageNumber, page)});
  EXPECT_FALSE(page.enabled);
  viewer.Send(PG_START);
  Go(viewer, goto_dialog::kPageNumber, "30");
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes()[0].text, "Invalid page number.");
  EXPECT_EQ(Boxes()[0].caption, "Go To Page");
  EXPECT_EQ(Boxes()[0].style, UINT{MB_ICONEXCLAMATION});
  EXPECT_EQ(Beeps(), std::vector<UINT>{48});
  EXPECT_EQ(Viewer::Top(), FilePos::At(0));
}

}  // namespace
