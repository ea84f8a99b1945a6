// The window's tests run the real program without a display, on a profile folder of their own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>

#include "platform/testing.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::filesystem::path settings =
      std::filesystem::temp_directory_path() / ("quorl settings " + std::to_string(std::random_device()()));
  setenv("XDG_CONFIG_HOME", settings.c_str(), 1);
  platform_testing::StartToolkit(argc, argv);
  const int failures = RUN_ALL_TESTS();
  std::filesystem::remove_all(settings);
  return failures;
}
