// Files and folders of a test, in the system's temporary folder, gone with the test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

inline void PutContent(const std::string& path, const std::string& content, std::ios::openmode mode) {
  std::ofstream out(path, std::ios::binary | mode);
  out << content;
  EXPECT_TRUE(out.good()) << path;
}

inline std::string ContentOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// While it lives, the settings of the user lie in it, so that no test touches those of the person who runs
// it.
class ScratchFolder {
 public:
  ScratchFolder() {
    folder_ = (std::filesystem::temp_directory_path() / "quorl test XXXXXX").string();
    if (mkdtemp(folder_.data()) == nullptr) std::abort();
    if (const char* former = std::getenv("XDG_CONFIG_HOME")) settings_ = former;
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
  }
  ~ScratchFolder() {
    setenv("XDG_CONFIG_HOME", settings_.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] std::string Path(const std::string& name = "") const {
    return name.empty() ? folder_ : folder_ + "/" + name;
  }
  std::string Write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    PutContent(Path(name), content, std::ios::trunc);
    return Path(name);
  }
  // Names of the files in the folder or one below it, with blanks between.
  [[nodiscard]] std::string Names(const std::string& below = "") const {
    std::string names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(below))) {
      if (!names.empty()) names += ' ';
      names += entry.path().filename().string();
    }
    return names;
  }

 private:
  std::string folder_;
  std::string settings_;  // where they lay before
};

class ScratchFile {
 public:
  explicit ScratchFile(const std::string& content) {
    path_ = (std::filesystem::temp_directory_path() / "quorl_test_XXXXXX").string();
    const int file = mkstemp(path_.data());
    if (file < 0) std::abort();
    close(file);
    Write(content);
  }
  ~ScratchFile() { Remove(); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  void Write(const std::string& content) { PutContent(path_, content, std::ios::trunc); }
  void Append(const std::string& content) { PutContent(path_, content, std::ios::app); }
  void Remove() { std::remove(path_.c_str()); }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};
