// A folder of a test, in the system's temporary folder, gone with the test. While it lives, the settings of
// the user lie in it, so that no test touches those of the person who runs it.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quorl_test_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
    setenv("XDG_CONFIG_HOME", name.c_str(), 1);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  std::string Write(const std::string& name, const std::string& content) const {
    const std::filesystem::path path = folder_ / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << content;
    EXPECT_TRUE(out.good());
    return path.string();
  }

  // Names of the files in the folder or one below it, with blanks between.
  [[nodiscard]] std::string Names(const std::string& below = "") const {
    std::string names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / below)) {
      names += (names.empty() ? "" : " ") + entry.path().filename().string();
    }
    return names;
  }

 private:
  std::filesystem::path folder_;
};

inline std::string ContentOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
