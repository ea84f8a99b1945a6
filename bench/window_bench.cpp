// The cost of showing: a full repaint of a 200 x 60 screen and a step of one line, on the off-screen window.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/testing.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"
#include "window/start_up.h"

namespace {

constexpr int kColumns = 200;
constexpr int kRows = 60;

void Pump() {
  platform_testing::PumpUntilIdle(MainState.MainWindow, MainState.AccelTable);
}

void FullRepaint(benchmark::State& state) {
  for (auto _ : state) {
    RepaintWindow();
    UpdateWindow(MainState.MainWindow);
  }
}
BENCHMARK(FullRepaint)->Unit(benchmark::kMicrosecond);

void OneLineScroll(benchmark::State& state) {
  SendMessageA(MainState.MainWindow, WM_VIEW_LOAD, 0, MainState.File.Flen.Offset() / 2);
  Pump();
  const std::int64_t opened = platform_testing::FilesOpened();
  std::intptr_t step = 1;
  for (auto _ : state) {
    SendMessageA(MainState.MainWindow, WM_VIEW_MOVE, static_cast<WPARAM>(step), kNoPosition.Offset());
    step = -step;
  }
  state.counters["files opened"] = static_cast<double>(platform_testing::FilesOpened() - opened);
}
BENCHMARK(OneLineScroll)->Unit(benchmark::kMicrosecond);

std::filesystem::path SamplePath(const char* name) {
  return std::filesystem::temp_directory_path() / (name + std::to_string(std::rand()));
}

// Rows of wide characters, a thousand different ones, from the faces that the system has for them.
void FullRepaintChinese(benchmark::State& state) {
  const std::string path = SamplePath("quorl_window_bench_chinese_").string();
  {
    std::ofstream out(path);
    for (unsigned i = 0; i < 100 * kColumns; ++i) {
      const unsigned character = 0x4E00 + i * 7919 % 1000;
      out << static_cast<char>(0xE0 | character >> 12) << static_cast<char>(0x80 | (character >> 6 & 0x3F))
          << static_cast<char>(0x80 | (character & 0x3F));
      if (i % (kColumns / 2) == kColumns / 2 - 1) out << '\n';
    }
  }
  SendMessageA(MainState.MainWindow, WM_FILE_TRY, 0, reinterpret_cast<LPARAM>(path.c_str()));
  Pump();
  FullRepaint(state);
  std::filesystem::remove(path);
}
BENCHMARK(FullRepaintChinese)->Unit(benchmark::kMicrosecond);

std::string WriteSample() {
  const std::string path = SamplePath("quorl_window_bench_").string();
  std::ofstream out(path);
  for (int i = 0; i < 20000; ++i) {
    std::string line = "row " + std::to_string(i) + " ";
    while (line.size() < kColumns)
      line += "the quick brown fox jumps over the lazy dog ";
    line.resize(kColumns);
    out << line << '\n';
  }
  return path;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  platform_testing::StartToolkit(argc, argv);
  const std::string path = WriteSample();
  platform_testing::SetCommandWords({path});
  if (StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL)) return 1;
  Pump();
  platform_testing::ResizeClient(MainState.MainWindow, kColumns * MainState.CharWidth,
                                 kRows * MainState.CharHeight);
  Pump();
  benchmark::RunSpecifiedBenchmarks();
  SendMessageA(MainState.MainWindow, WM_CLOSE, 0, 0);
  StopProgram();
  std::filesystem::remove(path);
  return 0;
}
