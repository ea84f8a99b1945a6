// A file of a test, in the system's temporary folder, gone with the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

class ScratchFile {
 public:
  explicit ScratchFile(const std::string& content) {
    static int number = 0;
    std::random_device device;
    path_ = (std::filesystem::temp_directory_path() /
             ("quorl_test_" + std::to_string(device()) + "_" + std::to_string(++number)))
                .string();
    Write(content);
  }
  ~ScratchFile() { std::remove(path_.c_str()); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  void Write(const std::string& content) { Put(content, std::ios::trunc); }
  void Append(const std::string& content) { Put(content, std::ios::app); }
  void Remove() { std::remove(path_.c_str()); }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  void Put(const std::string& content, std::ios::openmode mode) {
    std::ofstream out(path_, std::ios::binary | mode);
    out << content;
    ASSERT_TRUE(out.good());
  }
  std::string path_;
};
