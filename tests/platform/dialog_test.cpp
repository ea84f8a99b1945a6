#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "platform/paths.h"
#include "tests/platform/test_window.h"

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
    if (message == WM_DESTROY) {
      PostQuitMessage(5);
    }
    return false;
  };
  PostMessageA(window.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(MessageBoxA(window.Handle(), "Text", "Caption", MB_OK), IDOK);
  MSG message{};
  EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.wParam, 5U);
}

TEST(Boxes, ABoxMayOpenBehindABox) {
  TestWindow window;
  int depth = 0;
  window.handle = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_USER && depth++ < 3) {
      PostMessageA(window.Handle(), WM_USER, 0, 0);
      MessageBoxA(window.Handle(), "again", "Quorl", MB_OK);
    }
    return false;
  };
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  window.Pump();
  EXPECT_EQ(Boxes().size(), 3U);
}

class FileDialogs : public testing::Test {
 protected:
  FileDialogs() {
    char name[] = "/tmp/quorl dialog XXXXXX";
    folder_ = mkdtemp(name);
    std::ofstream(folder_ + "/report.txt") << "x";
    std::ofstream(folder_ + "/two words (1).dat") << "x";
    std::ofstream(folder_ + "/\xC3\xBC.log") << "x";
  }
  ~FileDialogs() override { static_cast<void>(std::system(("rm -rf '" + folder_ + "'").c_str())); }

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
  std::string folder_;
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

TEST_F(FileDialogs, BeginWithANameThatIsNoPattern) {
  EXPECT_FALSE(Run("missing.txt", folder_.c_str()));
  EXPECT_EQ(platform_testing::FileDialogs().front().name, "missing.txt");
  EXPECT_STREQ(file_, "missing.txt");
}

TEST_F(FileDialogs, RefuseWhatDoesNotExistAndServeTheQueueMeanwhile) {
  PostMessageA(window_.Handle(), WM_USER, 0, 0);
  AnswerNextFileDialog(folder_ + "/nothing");
  EXPECT_FALSE(Run("", folder_.c_str()));
  EXPECT_EQ(window_.Count(WM_USER), 1);
}

TEST_F(FileDialogs, GiveNothingWhenThePathDoesNotFit) {
  size_ = 8;
  AnswerNextFileDialog(folder_ + "/report.txt");
  EXPECT_FALSE(Run("x", folder_.c_str()));
  EXPECT_STREQ(file_, "x");
}

class FontDialogs : public testing::Test {
 protected:
  FontDialogs() {
    std::strcpy(font_.lfFaceName, "Courier New");
    font_.lfHeight = -13;
    font_.lfWeight = 400;
    choose_.lStructSize = sizeof choose_;
    choose_.hwndOwner = window_.Handle();
    choose_.lpLogFont = &font_;
    choose_.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST;
  }

  TestWindow window_;
  LOGFONTA font_{};
  CHOOSEFONTA choose_{};
};

TEST_F(FontDialogs, FillInTheChoice) {
  AnswerNextFontDialog(FontAnswer{"DejaVu Sans Mono", 18, 700, false});
  ASSERT_TRUE(ChooseFontA(&choose_));
  EXPECT_STREQ(font_.lfFaceName, "DejaVu Sans Mono");
  EXPECT_EQ(font_.lfHeight, -24);
  EXPECT_EQ(choose_.iPointSize, 180);
  EXPECT_EQ(font_.lfWeight, 700);
  EXPECT_EQ(font_.lfItalic, 0);
}

TEST_F(FontDialogs, CancelChangesNothing) {
  AnswerNextFontDialog(std::nullopt);
  EXPECT_FALSE(ChooseFontA(&choose_));
  EXPECT_STREQ(font_.lfFaceName, "Courier New");
  EXPECT_EQ(font_.lfHeight, -13);
  EXPECT_EQ(choose_.iPointSize, 0);
}

TEST_F(FontDialogs, AStandInFaceKeepsTheNameItStandsInFor) {
  AnswerNextFontDialog(FontAnswer{"Liberation Mono", 10, 400, false});
  ASSERT_TRUE(ChooseFontA(&choose_));
  EXPECT_STREQ(font_.lfFaceName, "Courier New");
  EXPECT_EQ(font_.lfHeight, -13);
  EXPECT_EQ(choose_.iPointSize, 100);
}

}  // namespace
