// The boxes and the dialogs of the system.
#include <cstring>

#include "platform/paths.h"
#include "tests/platform/test_window.h"
#include "tests/scratch.h"

namespace {

using namespace platform_testing;

TEST(Boxes, ServeTheQueueBehindThemAndAQuitGoesOnToTheLoopOutside) {
  TestWindow window;
  window.handle = [](UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) PostQuitMessage(5);
    return false;
  };
  window.paint = [](HDC, const PAINTSTRUCT&) {};
  InvalidateRect(window.Handle(), nullptr, FALSE);
  EXPECT_EQ(MessageBoxA(window.Handle(), "50% <b>of & all", nullptr, MB_ICONEXCLAMATION), IDOK);
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_PAINT}));
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes()[0].text, "50% <b>of & all");
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  EXPECT_EQ(MessageBoxA(window.Handle(), "Text", "Caption", MB_OK), IDOK);
  MSG message{};
  EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.wParam, 5U);
}

TEST(FileDialogs, GiveTheAbsolutePathWhereThereIsRoomForIt) {
  TestWindow window;
  const ScratchFolder folder;
  folder.Write("sub/inner.log", "x");
  const std::string home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
  struct Case {
    std::string answer;
    DWORD size;
    std::string path;  // empty: the dialog stays open
  };
  for (const Case& test : {Case{"two words (1).dat", kPathBytes, folder.Path("two words (1).dat")},
                           {"\xC3\xBC.log", kPathBytes, folder.Path("\xC3\xBC.log")},
                           {"two words (1).dat", 8, ""},
                           // Nobody looks whether there is such a file.
                           {"nothing", kPathBytes, folder.Path("nothing")},
                           {"no/such.log", kPathBytes, folder.Path("no/such.log")},
                           {"/no/such/place", kPathBytes, "/no/such/place"},
                           {"\"in quotes\"", kPathBytes, folder.Path("in quotes")},
                           {"~/name", kPathBytes, home + "/name"},
                           {"sub/inner.log", kPathBytes, folder.Path("sub/inner.log")},
                           {"missing/", kPathBytes, folder.Path("missing/")},
                           // Folders are entered: those that are listed, and what says that it is one.
                           {"sub", kPathBytes, ""},
                           {folder.Path("sub"), kPathBytes, ""},
                           {"..", kPathBytes, ""},
                           {"/tmp/", kPathBytes, ""}}) {
    const std::string directory = folder.Path();
    char file[kPathBytes] = "missing.txt";
    OPENFILENAMEA open{};
    open.lStructSize = sizeof open;
    open.hwndOwner = window.Handle();
    open.lpstrFilter = "Any File (*.*)\0*.*\0Default (*.txt)\0*.txt\0";
    open.nFilterIndex = 2;
    open.lpstrFile = file;
    open.nMaxFile = test.size;
    open.lpstrInitialDir = directory.c_str();
    open.Flags = OFN_HIDEREADONLY;
    AnswerNextFileDialog(test.answer);
    EXPECT_EQ(GetOpenFileNameA(&open) != FALSE, !test.path.empty()) << test.answer;
    EXPECT_EQ(file, !test.path.empty() ? test.path : "missing.txt");
  }
  EXPECT_EQ(platform_testing::FileDialogs().front().filters,
            (std::vector<std::string>{"Any File (*.*) (*)", "Default (*.txt) (*.txt)"}));
}

TEST(FontDialogs, AStandInFaceKeepsTheNameThatItStandsInFor) {
  TestWindow window;
  LOGFONTA font{};
  std::strcpy(font.lfFaceName, "Courier New");
  CHOOSEFONTA choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = window.Handle();
  choose.lpLogFont = &font;
  choose.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST;
  AnswerNextFontDialog(FontAnswer{"Liberation Mono", 18, 700, false});
  EXPECT_TRUE(ChooseFontA(&choose));
  EXPECT_STREQ(font.lfFaceName, "Courier New");
  EXPECT_EQ(font.lfHeight, -24);
  EXPECT_EQ(choose.iPointSize, 180);
}

}  // namespace
