// A folder of its own for a test, gone with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorl test XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] std::string Name(const std::string& name) const { return path_ + "/" + name; }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Name(name), std::ios::binary) << bytes;
    return Name(name);
  }

 private:
  std::string path_;
};
