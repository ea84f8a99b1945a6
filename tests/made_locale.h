// Real locales of the system, made in a folder of the test, in which the program finds them while this lives.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

class MadeLocales {
 public:
  // Names such as "de_DE.UTF-8", with the character set as localedef calls it.
  explicit MadeLocales(const std::vector<std::string>& names) {
    folder_ = (std::filesystem::temp_directory_path() / "quorl locales XXXXXX").string();
    if (mkdtemp(folder_.data()) == nullptr) std::abort();
    std::string commands;
    for (const std::string& name : names) {
      const std::size_t dot = name.find('.');
      commands += "localedef -c -i " + name.substr(0, dot) + " -f " + name.substr(dot + 1) + " '" + folder_ +
                  "/" + name + "' >/dev/null 2>&1 & ";
    }
    made_ = std::system((commands + "wait").c_str()) == 0;
    for (const std::string& name : names)
      made_ = made_ && std::filesystem::exists(folder_ + "/" + name + "/LC_TIME");
    setenv("LOCPATH", folder_.c_str(), 1);
  }
  ~MadeLocales() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
    unsetenv("LOCPATH");
    if (former_ == nullptr) {
      unsetenv("LC_ALL");
    } else {
      setenv("LC_ALL", formerText_.c_str(), 1);
    }
  }
  MadeLocales(const MadeLocales&) = delete;
  MadeLocales& operator=(const MadeLocales&) = delete;

  // False where the system has nothing to make them from.
  [[nodiscard]] bool Made() const { return made_; }
  static void Use(const std::string& name) { setenv("LC_ALL", name.c_str(), 1); }

 private:
  const char* former_ = std::getenv("LC_ALL");
  std::string formerText_ = former_ != nullptr ? former_ : "";
  std::string folder_;
  bool made_ = false;
};
