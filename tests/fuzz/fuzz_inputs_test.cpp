// The fuzz targets as an ordinary test: inputs from a fixed seed, the same ones at each run.
//   test_fuzz_inputs [format|load [first [count]]]
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "tests/fuzz/fuzz_inputs.h"

namespace {

struct Target {
  const char* name;
  void (*run)(const std::uint8_t* data, std::size_t size);
  std::int64_t count;
};
constexpr Target kTargets[] = {{"format", FuzzFormat, 20000}, {"load", FuzzLoad, 4000}};

void RunInput(const Target& target, std::int64_t number) {
  FuzzInputNumber = number;
  std::minstd_rand random(static_cast<std::minstd_rand::result_type>(number + 1));
  std::vector<std::uint8_t> input(64 + random() % 400);
  for (std::uint8_t& byte : input)
    byte = static_cast<std::uint8_t>(random() >> 8);
  target.run(input.data(), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  for (const Target& target : kTargets) {
    if (argc > 1 && std::strcmp(argv[1], target.name) != 0) continue;
    const std::int64_t first = argc > 2 ? std::atoll(argv[2]) : 0;
    const std::int64_t count = argc > 3 ? std::atoll(argv[3]) : argc > 2 ? 1 : target.count;
    for (std::int64_t i = first; i < first + count; ++i)
      RunInput(target, i);
    std::printf("%s: %lld inputs passed\n", target.name, static_cast<long long>(count));
  }
  return 0;
}
