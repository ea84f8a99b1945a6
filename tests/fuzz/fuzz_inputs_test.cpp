// What runs the targets: libFuzzer, one of them, or an ordinary test, both with inputs from a fixed seed, the
// same ones at each run.
//   test_fuzz_inputs [format|load|words|decoder NUMBER]   one input alone
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>

#include "tests/fuzz/fuzz_inputs.h"

#ifdef QUORL_LIBFUZZER
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QUORL_LIBFUZZER(data, size);
  return 0;
}
#else
int main(int argc, char** argv) {
  struct Target {
    std::string_view name;
    void (*run)(const std::uint8_t* data, std::size_t size);
    std::int64_t count;
  };
  for (const Target& target : {Target{"format", FuzzFormat, 20000}, Target{"load", FuzzLoad, 4000},
                               Target{"words", FuzzWords, 20000}, Target{"decoder", FuzzDecoder, 20000}}) {
    if (argc > 1 && argv[1] != target.name) continue;
    const std::int64_t first = argc > 2 ? std::atoll(argv[2]) : 0;
    const std::int64_t count = argc > 2 ? 1 : target.count;
    for (FuzzInputNumber = first; FuzzInputNumber < first + count; ++FuzzInputNumber) {
      std::minstd_rand random(static_cast<std::minstd_rand::result_type>(FuzzInputNumber + 1));
      std::vector<std::uint8_t> input(64 + random() % 400);
      for (std::uint8_t& byte : input)
        byte = static_cast<std::uint8_t>(random() >> 8);
      target.run(input.data(), input.size());
    }
    std::printf("%s: %lld inputs passed\n", target.name.data(), static_cast<long long>(count));
  }
  return 0;
}
#endif
