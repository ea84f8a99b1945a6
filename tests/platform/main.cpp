#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

#include "platform/program.h"
#include "platform/testing.h"

namespace {

LRESULT CALLBACK ChildProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE) std::puts("close");
  if (message == WM_DESTROY) PostQuitMessage(7);
  return DefWindowProcA(window, message, wParam, lParam);
}

// A small program, for tests that are about processes: no display, signals, exit codes, the words of the
// command line.
int ChildEntry(HINSTANCE, HINSTANCE, char* commandLine, int show) {
  std::printf("[%s]\n", commandLine);
  for (int i = 0; i < CommandWordCount(); ++i)
    std::puts(CommandWord(i));
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = ChildProcedure;
  windowClass.lpszClassName = "CHILD";
  RegisterClassA(&windowClass);
  const HWND window = CreateWindowExA(0, "CHILD", "Child", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0,
                                      CW_USEDEFAULT, 0, nullptr, nullptr, nullptr, nullptr);
  ShowWindow(window, show);
  std::puts("ready");
  std::fflush(stdout);
  MSG message{};
  while (GetMessageA(&message, nullptr, 0, 0) != 0)
    DispatchMessageA(&message);
  return static_cast<int>(message.wParam);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "--child") return RunProgram(argc, argv, ChildEntry);
  testing::InitGoogleTest(&argc, argv);
  platform_testing::StartToolkit(argc, argv);
  return RUN_ALL_TESTS();
}
