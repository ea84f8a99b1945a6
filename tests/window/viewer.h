// The program as a test runs it: started with command words, driven with input, looked at in its state and
// its picture, and taken down again.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/testing.h"
#include "tests/scratch.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"
#include "window/start_up.h"

class Viewer {
 public:
  static constexpr int kColumns = 80;
  static constexpr int kRows = 24;
  // Turns off what is beside the view; stands behind every profile.
  static constexpr const char* kPlainReading = "[Quorl Reading]\nStatusLine=0\nLightHits=0\n";

  // Starts the program with a profile of this text, or none, and works the queue off. The window is made to
  // hold kColumns and kRows, or keeps the size that it starts with.
  explicit Viewer(std::vector<std::string> words, const std::string& profile = "", bool resize = true) {
    std::filesystem::remove_all(std::getenv("XDG_CONFIG_HOME"));
    std::filesystem::create_directories(ProfileFile().parent_path());
    std::ofstream(ProfileFile()) << profile << (profile.empty() || profile.ends_with('\n') ? "" : "\n")
                                 << kPlainReading;
    platform_testing::SetCommandWords(std::move(words));
    EXPECT_EQ(StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL), std::nullopt);
    window_ = MainState.MainWindow;
    if (!Pump() || IsIconic(window_) || !resize) return;
    Resize(kColumns, kRows);
    MainState.FormatWidth = -1;  // else lines keep the length that the first size gave them
    Send(WM_VIEW_LAYOUT);
  }
  ~Viewer() {
    if (running_) SendMessageA(window_, WM_CLOSE, 0, 0);
    Pump();
    StopProgram();
    MainState = MainWindowState{};
    platform_testing::ForgetRecords();
    platform_testing::LogDrawing(false);
  }
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  // The profile, which stays when the program has ended.
  static std::filesystem::path ProfileFile() {
    return std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "quorl" / "QUORL.INI";
  }
  static std::string Profile() {
    std::ifstream file(ProfileFile());
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (const std::size_t at = text.find(kPlainReading); at != std::string::npos)
      text.erase(at, std::string(kPlainReading).size());
    text.erase(0, text.find_first_not_of('\n'));
    return text;
  }

  bool Pump() {
    if (running_) running_ = platform_testing::PumpUntilIdle(window_, MainState.AccelTable);
    return running_;
  }
  [[nodiscard]] bool Running() const { return running_; }
  [[nodiscard]] HWND Window() const { return window_; }

  // Sizes the client area in characters, however much room the bars take.
  void Resize(int columns, int rows) {
    ResizePixels(columns * MainState.CharWidth, rows * MainState.CharHeight);
  }
  void ResizePixels(int width, int height) {
    for (int turn = 0; turn < 3; ++turn) {
      platform_testing::ResizeClient(window_, width, height);
      Pump();
      if (MainState.ClientWidth == width && MainState.ClientHeight == height) return;
    }
  }
  void Key(int key, int keys = 0, int times = 1) {
    for (int i = 0; i < times; ++i) {
      platform_testing::PressKey(window_, key, keys);
      Pump();
    }
  }
  void Type(char character, int keys) {
    platform_testing::TypeCharacter(window_, character, keys);
    Pump();
  }
  void Send(UINT message, std::intptr_t wParam = 0, LPARAM lParam = 0) {
    SendMessageA(window_, message, static_cast<WPARAM>(wParam), lParam);
    Pump();
  }
  void Command(UINT id) { Send(WM_COMMAND, static_cast<std::intptr_t>(id)); }
  void MoveLines(int lines) { Send(WM_VIEW_MOVE, lines, kNoPosition.Offset()); }
  void GoTo(FilePos position) { Send(WM_VIEW_GOTO, 0, position.Offset()); }
  void MoveTo(FilePos position) { Send(WM_VIEW_MOVE, 0, position.Offset()); }

  // The file offset of the top line, and the text of the line `below` rows under it.
  static FilePos Top() { return Entry(0).Lpos; }
  static std::string Text(int below = 0) {
    const LineEntry& line = Entry(below);
    if (MainState.Lines.Acur + below >= MainState.Lines.Alast) return "(no line)";
    return CellsToUtf8(LineCells(line, MainState.Text));
  }
  static const LineEntry& Entry(int below) { return MainState.Lines.Aline[MainState.Lines.Acur + below]; }
  static bool ErrorPage() {
    return MainState.Lines.Acur < MainState.Lines.Alast && (Entry(0).Lflags & LF_MESSAGE) != 0;
  }

 private:
  HWND window_ = nullptr;
  bool running_ = true;
};

// `count` lines "line 0", "line 1" and so on, some of them longer than others.
inline std::string NumberedLines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += "line " + std::to_string(i) + std::string(static_cast<std::size_t>(i * 7 % 53), '.') + "\n";
  return text;
}
