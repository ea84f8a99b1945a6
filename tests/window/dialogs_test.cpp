// The dialogs of colors, frozen columns and saved options, and the About box, as a user goes through them.
#include <fcntl.h>
#include <sys/file.h>

#include "resources/command_ids.h"
#include "resources/dialogs/about_dialog.h"
#include "resources/dialogs/color_dialog.h"
#include "resources/dialogs/freeze_columns_dialog.h"
#include "resources/dialogs/save_options_dialog.h"
#include "tests/window/dialog_steps.h"
#include "tests/window/viewer.h"

namespace {

using namespace platform_testing;
using namespace dialog_steps;

DialogStep ChooseColor(int row) {
  return Choose(color_dialog::kList, row);
}

TEST(ColorDialog, TakesWhatTheUserChoseOnOk) {
  const ScratchFile file(NumberedLines(10));
  Viewer viewer({file.Path()});
  const COLORREF former = ColorTable[TagBgnd];
  for (const int end : {IDCANCEL, IDOK}) {
    AnswerNextColorDialog(RGB(1, 2, 3));
    AnswerNextColorDialog(std::nullopt);
    ScriptNextDialog({ChooseColor(WindowBgnd), Click(color_dialog::kChange), ChooseColor(TagBgnd),
                      Click(color_dialog::kChange),
                      [former](HWND dialog) {
                        EXPECT_EQ(ControlPixels(dialog, 165).Get(200, 2), RGB(1, 2, 3)) << "shown at once";
                        EXPECT_EQ(ControlPixels(dialog, 161).Get(200, 2), former) << "a cancelled choice";
                        EXPECT_TRUE(StateOfControl(dialog, color_dialog::kList).focused);
                      },
                      Click(end)});
    EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, IDM_COLORS, 0), end == IDOK ? 1 : 0);
    viewer.Pump();
    EXPECT_EQ(ColorTable[WindowBgnd] == RGB(1, 2, 3), end == IDOK);
    const Pixels pixels = ClientPixels(viewer.Window());
    EXPECT_EQ(pixels.Get(pixels.width - 1, 1) == RGB(1, 2, 3), end == IDOK);
  }
  ResetColors(COLORS_WINDOW, ColorTable);
}

TEST(ColorDialog, APictureOfTheViewChoosesSlots) {
  Viewer viewer({"-D"});
  ResetColors(COLORS_WINDOW, ColorTable);
  const struct {
    int sample, row;
  } clicks[] = {{161, TagText},     {161, TagBgnd},     {161, TagText},    {165, WindowText},
                {169, WindowBgnd},  {163, CommentText}, {170, Background}, {171, Background},
                {162, MessageText}, {160, HeadingText}, {160, HeadingBgnd}};
  std::vector<DialogStep> steps;
  for (const auto& click : clicks) {
    steps.push_back(Click(click.sample));
    steps.push_back([click](HWND dialog) {
      const ControlState list = StateOfControl(dialog, color_dialog::kList);
      EXPECT_EQ(list.row, click.row) << click.sample;
      EXPECT_TRUE(list.focused);
    });
  }
  steps.push_back([](HWND dialog) {
    EXPECT_EQ(StateOfControl(dialog, color_dialog::kList).rows.size(), 15U);
    for (const int band : {170, 171})
      EXPECT_EQ(ControlPixels(dialog, band).Get(5, 5), ColorTable[Background]);
    EXPECT_EQ(ControlPixels(dialog, 162).Get(250, 2), ColorTable[MessageBgnd]);
  });
  ScriptNextDialog(steps);
  EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, IDM_COLORS, 0), 0) << "the close box cancels";
}

TEST(ColorDialog, ResetsOneOrAll) {
  Viewer viewer({"-D"});
  COLORREF defaults[kColorSlots] = {};
  ResetColors(COLORS_WINDOW, defaults);
  for (COLORREF& color : ColorTable)
    color = RGB(9, 9, 9);
  ForgetRecords();
  ScriptNextDialog({ChooseColor(MessageBgnd), Click(color_dialog::kReset), Click(IDOK)});
  viewer.Command(IDM_COLORS);
  EXPECT_EQ(ColorTable[MessageBgnd], defaults[MessageBgnd]);
  EXPECT_EQ(ColorTable[MessageText], RGB(9, 9, 9));
  ScriptNextDialog({Click(color_dialog::kResetAll), Press(kEnter)});
  viewer.Command(IDM_COLORS);
  EXPECT_TRUE(std::equal(defaults, defaults + kWindowColors, ColorTable));
  EXPECT_EQ(ColorTable[PrintText], RGB(9, 9, 9)) << "print shades are not touched";
  ResetColors(COLORS_PRINT, ColorTable);
}

TEST(Colors, FollowTheDesktopButForThoseTheUserChose) {
  Viewer viewer({"-D"});
  const COLORREF light = ColorTable[WindowBgnd];
  ColorTable[TagBgnd] = RGB(9, 9, 9);
  platform_testing::SetDesktopDark(true);
  viewer.Pump();
  EXPECT_LT(ColorTable[WindowBgnd], light);
  EXPECT_EQ(ColorTable[WindowBgnd], GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(ColorTable[TagBgnd], RGB(9, 9, 9));
  platform_testing::SetDesktopDark(false);
  viewer.Pump();
  EXPECT_EQ(ColorTable[WindowBgnd], light);
}

TEST(FreezeColumnsDialog, TakesTheColumnFromTheCaret) {
  const ScratchFile file("one\ttwo \x01\x80 three\n" + NumberedLines(100));
  Viewer viewer({file.Path()});
  ScriptNextDialog(
      {[](HWND dialog) {
         EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kCount).text, "0");
         EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kSample).text.substr(0, 12), "one     two ");
         EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kRuler).text.size(), 80U);
         ClickInControl(dialog, freeze_columns_dialog::kRuler, 0, 5);
       },
       [](HWND dialog) {
         EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kCount).text, "0");
         PressDialogKey(dialog, VK_RIGHT, 0);
       },
       Press(VK_RIGHT),
       [](HWND dialog) { EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kCount).text, "2"); },
       [](HWND dialog) { ClickInControl(dialog, freeze_columns_dialog::kSample, 250, 5); },
       [](HWND dialog) { EXPECT_EQ(StateOfControl(dialog, freeze_columns_dialog::kCount).text, "20"); },
       Click(IDOK)});
  EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, IDM_FREEZE_COLUMNS, 0), 1);
  EXPECT_EQ(MainState.FrozenColumns, 20);
  ScriptNextDialog(
      {[](HWND dialog) { ClickInControl(dialog, freeze_columns_dialog::kRuler, 0, 5); }, Click(IDCANCEL)});
  viewer.Command(IDM_FREEZE_COLUMNS);
  EXPECT_EQ(MainState.FrozenColumns, 20) << "Cancel leaves the number alone";
  viewer.Command(IDM_CLEAR_COLUMNS);
  EXPECT_EQ(MainState.FrozenColumns, 0);
}

TEST(SaveOptions, SavesResetsOrKeepsEachGroup) {
  const ScratchFile file("head\nline\n");
  const std::string profile =
      "; mine\n[Quorl]\nTabLength=4\nForeign=1\n[Titles]\nTitles=1\nTitle1=old\n"
      "[Quorl Colors]\nTagText=5\n";
  const struct {
    std::vector<int> clicks;
    const char* button;  // of Save before it is pressed
    const char* left;
  } cases[] = {
      {{save_options_dialog::kFormat, save_options_dialog::kTitles, save_options_dialog::kColors},
       "gray",
       profile.c_str()},
      {{save_options_dialog::kFormat, save_options_dialog::kColors, save_options_dialog::kTitles,
        save_options_dialog::kTitles},
       "works",
       "; mine\n[Quorl]\nTabLength=4\nForeign=1\n[Quorl Colors]\nTagText=5\n"},
      {{save_options_dialog::kFormat, save_options_dialog::kColors},
       "works",
       "; mine\n[Quorl]\nTabLength=4\nForeign=1\n[Titles]\nTitles=1\nTitle1=head\n"
       "[Quorl Colors]\nTagText=5\n"},
      {{save_options_dialog::kFormat, save_options_dialog::kTitles},
       "works",
       "; mine\n[Quorl]\nTabLength=4\nForeign=1\n[Titles]\nTitles=1\nTitle1=old\n"
       "[Quorl Colors]\nTagText=6\n"},
  };
  for (const auto& c : cases) {
    Viewer viewer({"-s", file.Path()}, profile);
    MainState.SelStart = 0;
    MainState.SelEnd = 1;
    viewer.Command(IDM_FREEZE_TITLE);
    ColorTable[TagText] = 6;
    std::vector<DialogStep> steps;
    for (const int box : c.clicks)
      steps.push_back(Click(box));
    ControlState button;
    steps.insert(steps.end(), {Look(IDOK, button), Click(IDOK)});
    ScriptNextDialog(steps);
    viewer.Command(IDM_SAVE_OPTIONS);
    EXPECT_EQ(button.enabled, std::string(c.button) == "works");
    EXPECT_EQ(Viewer::Profile(), c.left);
    ResetColors(COLORS_WINDOW, ColorTable);
  }
}

// The profile is in a folder that another viewer has locked, and then one that is no folder.
TEST(SaveOptions, WhatFailsIsToldAndTheDialogStays) {
  const ScratchFile file("text\n");
  Viewer viewer({"-s", file.Path()}, "[Quorl]\nTabLength=4\n");
  const std::string profile = Viewer::ProfileFile().string();
  const std::filesystem::path folder = Viewer::ProfileFile().parent_path();
  const int lock = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  ScriptNextDialog({Click(IDOK), [lock](HWND dialog) {
                      EXPECT_EQ(Boxes().size(), 1U);
                      close(lock);
                      ClickControl(dialog, IDOK);
                    }});
  viewer.Command(IDM_SAVE_OPTIONS);
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes()[0].text, "Cannot save the options in\n" + profile + "\nDevice or resource busy.");
  EXPECT_NE(Viewer::Profile().find("LineLength="), std::string::npos) << "the second time";

  std::filesystem::remove_all(folder);
  PutContent(folder.string(), "", std::ios::trunc);
  ScriptNextDialog({Click(IDOK)});
  viewer.Command(IDM_SAVE_OPTIONS);
  ASSERT_EQ(Boxes().size(), 2U);
  EXPECT_EQ(Boxes()[1].text, "Cannot save the options in\n" + profile + "\nNot a directory.");

  // The recent files fail at the end.
  MainState.MruFiles = 1;
  testing::internal::CaptureStderr();
  viewer.Send(WM_CLOSE);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "quorl: cannot save the recent files and searches in " + profile + ": Not a directory\n");
}

TEST(SaveOptions, OfTheFormatHoldAtTheNextStart) {
  const ScratchFile file("text\n");
  std::string saved;
  {
    Viewer viewer({file.Path()});
    viewer.Command(IDM_HEX);
    MainState.FrozenColumns = 7;
    MainState.SavePos = 1;
    ScriptNextDialog({Press(kEnter)});
    viewer.Command(IDM_SAVE_OPTIONS);
    saved = Viewer::Profile();
    EXPECT_NE(saved.find("WindowPos="), std::string::npos);
  }
  Viewer viewer({file.Path()}, saved);
  EXPECT_EQ(MainState.FormatIndex, kFormatHex);
  EXPECT_EQ(MainState.FrozenColumns, 7);
  RECT window{};
  GetWindowRect(viewer.Window(), &window);
  EXPECT_EQ(window.left, MainState.WindowX);
  EXPECT_EQ(window.top, MainState.WindowY);
}

}  // namespace
