// What comes from outside as words: command strings, words of the command line, names of places.
#include <cstring>
#include <memory>
#include <string>

#include "dde/dde_verbs.h"
#include "places/place.h"
#include "settings/command_line.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

// Takes everything, and looks whether what it is handed ends.
class Taker : public DdeHost {
 public:
  [[nodiscard]] bool IsBusy() const override { return busy; }
  void Open(const char* path) override { Look(path); }
  void Close() override {}
  void Send(std::string_view command) override { Look(command.data()); }
  void Post(std::string_view command, bool /*forOthers*/) override { Look(command.data()); }
  void Show(int /*how*/) override {}
  SearchState& Search() override { return *search; }
  [[nodiscard]] ViewOptions FileCode() const override { return 0; }
  bool SetSetup(std::string_view section) override { return section.size() < kSetupSectionBytes; }
  static void Look(const char* text) {
    FUZZ_CHECK(std::strlen(text) <= static_cast<std::size_t>(kDdeCommandBytes));
  }

  bool busy = false;
  std::unique_ptr<SearchState> search = std::make_unique<SearchState>();
};

}  // namespace

void FuzzWords(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Taker host;
  host.busy = size % 3 == 1;
  const DdeAnswer answer = RunDdeString(text, host);
  FUZZ_CHECK(text.find('\0') <= static_cast<std::size_t>(kDdeCommandBytes) || size <= kDdeCommandBytes ||
             answer == DdeAnswer::notProcessed);
  FUZZ_CHECK(host.search->SearchKeyLen <= kSearchKeyBytes);

  const auto line = std::make_unique<CommandLineWords>();
  ParseCommandLine(text, *line);
  FinishCommandLine(*line);
  FUZZ_CHECK(line->CommandFile[0] != '\0' && std::strlen(line->CommandFile) < sizeof line->CommandFile);
  FUZZ_CHECK(std::strlen(line->SetupSection) < sizeof line->SetupSection);

  if (const auto place = ParsePlace(text)) {
    FUZZ_CHECK(place->value >= 0);
    const GoToAnswer where = AnswerOf(*place, 1000);
    FUZZ_CHECK(where.choice == GoToChoice::pageNumber || (where.value >= 0 && where.value <= 1000));
  }
}
