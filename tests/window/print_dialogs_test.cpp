// The dialogs of pages and shades, and the boxes of Save Options that concern printing, as a user goes
// through them.
#include "resources/command_ids.h"
#include "resources/dialogs/page_setup_dialog.h"
#include "resources/dialogs/print_shades_dialog.h"
#include "resources/dialogs/save_options_dialog.h"
#include "tests/made_locale.h"
#include "tests/window/dialog_steps.h"
#include "tests/window/viewer.h"

namespace {

using namespace platform_testing;
using namespace dialog_steps;
namespace page = page_setup_dialog;
namespace shades = print_shades_dialog;

// Replaces the text of a field.
DialogStep Fill(int id, const std::string& text) {
  return [id, text](HWND dialog) { SetDlgItemTextA(dialog, id, text.c_str()); };
}

DialogStep Expect(int id, const std::string& text) {
  return [id, text](HWND dialog) { EXPECT_EQ(StateOfControl(dialog, id).text, text) << id; };
}

std::vector<std::int64_t> PageNumbers() {
  const PageSetup& setup = MainState;
  return {setup.PrintOptions, setup.MarginTop, setup.MarginLeft, setup.MarginRight, setup.MarginBottom};
}
using Numbers = std::vector<std::int64_t>;

TEST(PageSetupDialog, TakesBoxesAndMarginsOnOk) {
  MadeLocales::Use("C");
  Viewer viewer({"-D"});
  // of the start
  EXPECT_EQ(PageNumbers(), (Numbers{0x6FF, 0, 50, 0, 0}));
  for (const int end : {IDCANCEL, IDOK}) {
    ScriptNextDialog({[](HWND dialog) {
                        EXPECT_EQ(StateOfControl(dialog, page::kMargins).text, "Margins (in)");
                        EXPECT_EQ(StateOfControl(dialog, page::kLeft).text, "0.5");
                        EXPECT_EQ(StateOfControl(dialog, page::kFullPath).checked, BST_CHECKED);
                        EXPECT_EQ(StateOfControl(dialog, page::kEjectOnFormFeeds).checked, BST_UNCHECKED);
                        EXPECT_EQ(StateOfControl(dialog, page::kShadeSelection).checked, BST_UNCHECKED);
                        EXPECT_TRUE(StateOfControl(dialog, page::kSave).enabled);
                      },
                      Click(page::kFullPath), Click(page::kEjectOnFormFeeds), Fill(page::kTop, "1.239"),
                      Fill(page::kBottom, "3"), Click(end)});
    EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, IDM_PAGE_SETUP, 0), end == IDOK ? 1 : 0);
    EXPECT_EQ(PageNumbers(), end == IDOK ? (Numbers{0x707, 123, 50, 0, 300}) : (Numbers{0x6FF, 0, 50, 0, 0}));
  }
  EXPECT_EQ(Viewer::Profile().find("[Page Setup]"), std::string::npos);
}

TEST(PageSetupDialog, RefusesWhatNoMarginCanBe) {
  MadeLocales::Use("C");
  Viewer viewer({"-D"});
  ForgetRecords();  // of the start
  const struct {
    int field;
    const char *text, *message;
  } cases[] = {{page::kTop, "3.01", "Page top margin must be a number between 0 and 3!"},
               {page::kLeft, "", "Page left margin must be a number between 0 and 3!"},
               {page::kRight, "-0.01", "Page right margin must be a number between 0 and 3!"},
               {page::kBottom, "0,5", "Invalid character \",\" in Page bottom margin."}};
  std::vector<DialogStep> steps;
  for (const auto& c : cases) {
    steps.insert(steps.end(), {Fill(c.field, c.text), Click(IDOK), [&c](HWND dialog) {
                                 EXPECT_EQ(Boxes().back().text, c.message);
                                 EXPECT_EQ(Boxes().back().caption, "Bad Options");
                                 EXPECT_TRUE(StateOfControl(dialog, c.field).focused);
                                 EXPECT_EQ(Beeps().back(), MB_ICONASTERISK);
                                 SetDlgItemTextA(dialog, c.field, "1");
                               }});
  }
  steps.push_back(Click(IDOK));
  ScriptNextDialog(steps);
  viewer.Command(IDM_PAGE_SETUP);
  EXPECT_EQ(Boxes().size(), std::size(cases));
  EXPECT_EQ(PageNumbers(), (Numbers{0x60F, 100, 100, 100, 100}));
}

TEST(PageSetupDialog, TalksInCentimetresWhereTheUserDoes) {
  const MadeLocales locales({"de_DE.UTF-8"});
  if (!locales.Made()) GTEST_SKIP() << "localedef, or the sources of the locales, are missing here";
  MadeLocales::Use("de_DE.UTF-8");
  Viewer viewer({"-D"});
  ForgetRecords();  // of the start
  ScriptNextDialog({Expect(page::kMargins, "Margins (cm)"), Expect(page::kLeft, "1,2"),
                    Fill(page::kTop, "7,6"), Click(IDOK),
                    [](HWND) {
                      ASSERT_EQ(Boxes().size(), 1U);
                      EXPECT_EQ(Boxes()[0].text, "Page top margin must be a number between 0 and 7,5!");
                    },
                    Fill(page::kTop, "7,5"), Click(IDOK)});
  viewer.Command(IDM_PAGE_SETUP);
  EXPECT_EQ(PageNumbers(), (Numbers{0x60F, 300, 48, 0, 0}));
}

TEST(PageSetupDialog, SavesAndTellsWhenItCannot) {
  MadeLocales::Use("C");
  const std::string former = "[Page Setup]\nPrintOptions=1\n";
  {
    Viewer viewer({"-D"}, former);
    ForgetRecords();  // of the start
    const std::filesystem::path folder = Viewer::ProfileFile().parent_path();
    ScriptNextDialog({Fill(page::kTop, "2"), Click(page::kSave)});
    viewer.Command(IDM_PAGE_SETUP);
    EXPECT_EQ(Viewer::Profile(), former + "PageMargins=200,50,0,0\n");
    std::filesystem::remove_all(folder);
    PutContent(folder.string(), "", std::ios::trunc);
    ScriptNextDialog({Fill(page::kTop, "1"), Click(page::kSave), Click(IDCANCEL)});
    viewer.Command(IDM_PAGE_SETUP);
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].text,
              "Cannot save the page setup in\n" + Viewer::ProfileFile().string() + "\nNot a directory.");
    EXPECT_EQ(MainState.MarginTop, 200) << "Cancel behind it leaves the margin alone";
  }
  Viewer viewer({"-D"}, former);
  ForgetRecords();  // of the start
  EXPECT_EQ(MainState.PrintOptions, 1U);
  MainState.ProfileReadOnly = -1;
  ControlState save;
  ScriptNextDialog({Look(page::kSave, save)});
  viewer.Command(IDM_PAGE_SETUP);
  EXPECT_FALSE(save.enabled);
}

TEST(PrintShadesDialog, TakesNumbersAndKeepsThePapersShade) {
  Viewer viewer({"-D"});
  ForgetRecords();  // of the start
  ColorTable[PrintTag] = RGB(200, 1, 2);
  ColorTable[PrintBgnd] = RGB(1, 2, 3);
  // From within Page Setup, whose Cancel takes nothing back.
  const auto run = [&viewer](std::vector<DialogStep> steps) {
    ScriptNextDialog({Click(page::kShades), Click(IDCANCEL)});
    ScriptNextDialog(std::move(steps));
    viewer.Command(IDM_PAGE_SETUP);
  };
  run({[](HWND dialog) {
         EXPECT_TRUE(StateOfControl(dialog, shades::kNormalText).focused);
         EXPECT_EQ(StateOfControl(dialog, shades::kTagText).text, "1");
       },
       Fill(shades::kCommentBgnd, "9"), Click(IDOK), Fill(shades::kCommentBgnd, "3"), Press(kEnter)});
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes()[0].text, "Comment Background shade must be a number between 0 and 8!");
  EXPECT_EQ(ColorTable[PrintCmntB], 0xA0A0A0U);
  EXPECT_EQ(ColorTable[PrintTag], 0xE0E0E0U);
  EXPECT_EQ(ColorTable[PrintBgnd], RGB(1, 2, 3));
  run({Click(shades::kResetAll), Expect(shades::kCommentBgnd, "8"), Click(IDCANCEL)});
  EXPECT_EQ(ColorTable[PrintCmntB], 0xA0A0A0U);
  run({Click(shades::kResetAll), Fill(shades::kTagBgnd, "4"), Click(shades::kSave)});
  EXPECT_EQ(ColorTable[PrintBgnd], 0xE0E0E0U);
  EXPECT_EQ(Viewer::Profile(), "[Quorl Colors]\nPrintTagB=8421504\n");
  // A save that fails is told, and the shades are in force all the same.
  const std::filesystem::path folder = Viewer::ProfileFile().parent_path();
  std::filesystem::remove_all(folder);
  PutContent(folder.string(), "", std::ios::trunc);
  run({Fill(shades::kTagBgnd, "5"), Click(shades::kSave), Click(IDCANCEL)});
  ASSERT_EQ(Boxes().size(), 2U);
  EXPECT_EQ(ColorTable[PrintTagB], 0x606060U);
  ResetColors(COLORS_PRINT, ColorTable);
}

TEST(SaveOptions, SavesPageAndPrinterWithTheRest) {
  Viewer viewer({"-D"}, "[Print Setup]\nPrtCopies=2\nPrtDevice=Laser\n[Page Setup]\nPageMargins=9\n");
  ForgetRecords();  // of the start
  EXPECT_EQ(MainState.MarginTop, 9);
  ASSERT_TRUE(MainState.PrinterMode.has_value());
  MainState.PrinterMode->dmCopies = 3;
  MainState.MarginTop = 1;
  const auto twice = [](int box) { return std::vector<DialogStep>{Click(box), Click(box)}; };
  std::vector<DialogStep> steps = {Click(save_options_dialog::kFormat), Click(save_options_dialog::kTitles),
                                   Click(save_options_dialog::kColors), Click(save_options_dialog::kPrinter)};
  for (const DialogStep& step : twice(save_options_dialog::kPage))
    steps.push_back(step);
  steps.push_back(Click(IDOK));
  ScriptNextDialog(steps);
  viewer.Command(IDM_SAVE_OPTIONS);
  EXPECT_EQ(Viewer::Profile(), "[Page Setup]\nPageMargins=1,0,0,0\nPrintOptions=1791\n");
}

}  // namespace
