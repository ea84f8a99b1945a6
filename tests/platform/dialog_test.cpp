#include <cstring>

#include "platform/paths.h"
#include "tests/platform/test_window.h"
#include "tests/scratch.h"

namespace {

using namespace platform_testing;

TEST(Boxes, ShowTextAndCaptionAndServeTheQueueBehindThem) {
  TestWindow window;
  window.paint = [](HDC, const PAINTSTRUCT&) {};
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  InvalidateRect(window.Handle(), nullptr, FALSE);
  EXPECT_EQ(MessageBoxA(window.Handle(), "50% <b>of & all", "Bad Options", MB_ICONEXCLAMATION), IDOK);
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_USER, WM_PAINT}));
  EXPECT_EQ(MessageBoxA(nullptr, "Cannot register class", nullptr, MB_ICONHAND), IDOK);
  ASSERT_EQ(Boxes().size(), 2U);
  EXPECT_EQ(Boxes()[0].text, "50% <b>of & all");
  EXPECT_EQ(Boxes()[0].style, MB_ICONEXCLAMATION);
  EXPECT_EQ(Boxes()[1].caption, "Error");
  MessageBeep(16);
  EXPECT_EQ(Beeps(), std::vector<UINT>{16});
}

TEST(Boxes, AQuitEndsABoxAndGoesOnToTheLoopOutside) {
  TestWindow window;
  window.handle = [](UINT message, WPARAM, LPARAM) {
    if (message == WM_DESTROY) PostQuitMessage(5);
    return false;
  };
  PostMessageA(window.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(MessageBoxA(window.Handle(), "Text", "Caption", MB_OK), IDOK);
  MSG message{};
  EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.wParam, 5U);
}

class FileDialogs : public testing::Test {
 protected:
  FileDialogs() {
    for (const char* name : {"report.txt", "two words (1).dat", "\xC3\xBC.log"})
      scratch_.Write(name, "x");
  }

  BOOL Run(const char* name, const char* directory) {
    std::strcpy(file_, name);
    OPENFILENAMEA open{};
    open.lStructSize = sizeof open;
    open.hwndOwner = window_.Handle();
    open.lpstrFilter = "Any File (*.*)\0*.*\0Default (*.txt)\0*.txt\0";
    open.nFilterIndex = 2;
    open.lpstrFile = file_;
    open.nMaxFile = size_;
    open.lpstrInitialDir = directory;
    open.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
    return GetOpenFileNameA(&open);
  }

  TestWindow window_;
  ScratchFolder scratch_;
  std::string folder_ = scratch_.Path();
  char file_[kPathBytes] = {};
  DWORD size_ = kPathBytes;
};

TEST_F(FileDialogs, GiveTheAbsolutePathOfTheChosenFile) {
  for (const char* name : {"report.txt", "two words (1).dat", "\xC3\xBC.log"}) {
    AnswerNextFileDialog(name);
    ASSERT_TRUE(Run("*.txt", folder_.c_str())) << name;
    EXPECT_EQ(std::string(file_), folder_ + "/" + name);
  }
  AnswerNextFileDialog(folder_ + "/report.txt");
  ASSERT_TRUE(Run("", "/"));
  EXPECT_EQ(std::string(file_), folder_ + "/report.txt");
  const FileDialog& first = platform_testing::FileDialogs().front();
  EXPECT_EQ(first.filters, (std::vector<std::string>{"Any File (*.*)", "*.*", "Default (*.txt)", "*.txt"}));
  EXPECT_EQ(first.filterIndex, 2);
  EXPECT_EQ(first.directory, folder_);
  EXPECT_EQ(first.name, "");
}

TEST_F(FileDialogs, RefuseWhatCannotBeOpenedAndServeTheQueueMeanwhile) {
  EXPECT_FALSE(Run("missing.txt", folder_.c_str()));
  EXPECT_EQ(platform_testing::FileDialogs().front().name, "missing.txt");
  EXPECT_STREQ(file_, "missing.txt");
  PostMessageA(window_.Handle(), WM_USER, 0, 0);
  AnswerNextFileDialog(folder_ + "/nothing");
  EXPECT_FALSE(Run("", folder_.c_str()));
  EXPECT_EQ(window_.Count(WM_USER), 1);
  size_ = 8;  // the path does not fit
  AnswerNextFileDialog(folder_ + "/report.txt");
  EXPECT_FALSE(Run("x", folder_.c_str()));
  EXPECT_STREQ(file_, "x");
}

TEST(FontDialogs, FillInTheChoice) {
  struct Case {
    std::optional<FontAnswer> answer;
    const char* face;
    int height, weight, points;
  };
  const Case cases[] = {
      {FontAnswer{"DejaVu Sans Mono", 18, 700, false}, "DejaVu Sans Mono", -24, 700, 180},
      {std::nullopt, "Courier New", -13, 400, 0},
      // A stand-in face keeps the name that it stands in for.
      {FontAnswer{"Liberation Mono", 10, 400, false}, "Courier New", -13, 400, 100},
  };
  TestWindow window;
  for (const Case& c : cases) {
    LOGFONTA font{};
    std::strcpy(font.lfFaceName, "Courier New");
    font.lfHeight = -13;
    font.lfWeight = 400;
    CHOOSEFONTA choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = window.Handle();
    choose.lpLogFont = &font;
    choose.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST;
    AnswerNextFontDialog(c.answer);
    EXPECT_EQ(ChooseFontA(&choose) != FALSE, c.answer.has_value());
    EXPECT_STREQ(font.lfFaceName, c.face);
    EXPECT_EQ(font.lfHeight, c.height);
    EXPECT_EQ(font.lfWeight, c.weight);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(choose.iPointSize, c.points);
  }
}

}  // namespace
