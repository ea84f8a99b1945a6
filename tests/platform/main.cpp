#include <gtest/gtest.h>

#include <string_view>

#include "platform/testing.h"
#include "tests/platform/child_program.h"

int main(int argc, char** argv) {
  // Some tests run this program again as the program under test.
  if (argc > 1 && std::string_view(argv[1]) == kChildOption) return RunChildProgram(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  platform_testing::StartToolkit(argc, argv);
  return RUN_ALL_TESTS();
}
