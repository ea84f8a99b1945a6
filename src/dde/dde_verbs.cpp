#include "dde/dde_verbs.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "search/search_key.h"

namespace {

enum class Deed : std::uint8_t { nothing, open, close, sent, posted, postedForOthers, show, find, setup };

// The first row whose verb and argument fit counts. Null for an argument stands for any.
struct Verb {
  const char* verb;
  const char* argument;
  Deed deed;
  bool whenBusy;                  // runs also while a dialog or a job is up
  const char* command = nullptr;  // its name
  int show = 0;                   // an SW_ number
};
constexpr Verb kVerbs[] = {
    {"Open", "", Deed::nothing, true},
    {"Open", nullptr, Deed::open, false},
    {"Close", nullptr, Deed::postedForOthers, false, "close"},
    {"Print", "", Deed::postedForOthers, false, "print-file"},
    {"Print", "Page", Deed::posted, false, "print-page"},
    {"Print", "Tags", Deed::posted, false, "print-tags-now"},
    {"Print", nullptr, Deed::nothing, true},
    {"Exit", nullptr, Deed::close, false},
    {"DDE", nullptr, Deed::posted, true, "ignore-dde"},
    {"Display", "Text", Deed::sent, false, "text"},
    {"Display", "Hex", Deed::sent, false, "hex"},
    {"Display", "Raw", Deed::sent, false, "raw"},
    {"Display", "Wrap", Deed::sent, false, "wrap"},
    {"Display", "ZoomIn", Deed::sent, false, "zoom-in"},
    {"Display", "ZoomOut", Deed::sent, false, "zoom-out"},
    {"Display", "ZoomReset", Deed::sent, false, "zoom-reset"},
    {"Display", nullptr, Deed::nothing, true},
    {"Window", "Minimize", Deed::show, true, nullptr, SW_MINIMIZE},
    {"Window", "Maximize", Deed::show, true, nullptr, SW_MAXIMIZE},
    {"Window", "Restore", Deed::show, true, nullptr, SW_SHOWNORMAL},
    {"Window", "OnTop", Deed::sent, true, "on-top"},
    {"Window", nullptr, Deed::nothing, true},
    {"Find", nullptr, Deed::find, false},
    {"Setup", nullptr, Deed::setup, false},
};

bool SameWord(std::string_view one, std::string_view other) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::equal(one, other, {}, lower, lower);
}

const Verb* FindVerb(const DdeTokens& tokens) {
  const auto found = std::ranges::find_if(kVerbs, [&tokens](const Verb& verb) {
    return SameWord(verb.verb, tokens.slots[0]) &&
           (verb.argument == nullptr || SameWord(verb.argument, tokens.slots[1]));
  });
  return found == std::end(kVerbs) ? nullptr : found;
}

bool HasOption(const DdeTokens& tokens, std::string_view option) {
  return std::any_of(tokens.slots.begin() + 2, tokens.slots.end(),
                     [option](const char* word) { return SameWord(word, option); });
}

void SetKey(SearchState& search, const std::string& key) {
  std::fill(std::begin(search.SearchKey), std::end(search.SearchKey), std::uint8_t{0});
  std::memcpy(search.SearchKey, key.data(), key.size());
  search.SearchKeyLen = static_cast<std::int32_t>(key.size());
}

void Find(const DdeTokens& tokens, DdeHost& host) {
  const char* const text = tokens.slots[1];
  if (text[0] == '\0') return;
  SearchState& search = host.Search();
  search.SearchFlags = SEARCH_TEXT;
  if (HasOption(tokens, "Case")) search.SearchFlags |= SEARCH_CASE;
  if (HasOption(tokens, "Top")) {
    search.SearchFlags |= SEARCH_FROM_TOP;
    search.SearchNext = 0;
  }
  // In a code of one byte a character, the bytes of the text in ANSI are looked for unchanged.
  const ViewOptions code = host.FileCode();
  SetKey(search, CheckTextKey(text, code).accepted ? TextKeyOf(text, code) : "");
  search.SearchFlags |= static_cast<std::uint16_t>(code);
  if (HasOption(tokens, "Hex")) {
    SetKey(search, "");
    search.SearchFlags &= static_cast<std::uint16_t>(~SEARCH_CODES);
    search.SearchKeyLen = ParseHexText(search.SearchKey, text, static_cast<std::int32_t>(std::strlen(text)));
  }
  if (search.SearchKeyLen < 1) return;
  host.Post(HasOption(tokens, "All") ? "find-mark-all" : "find-next", false);
}

void Run(const Verb& verb, const DdeTokens& tokens, DdeHost& host) {
  switch (verb.deed) {
    case Deed::nothing:
      break;
    case Deed::open:
      host.Open(tokens.slots[1]);
      break;
    case Deed::close:
      host.Close();
      break;
    case Deed::sent:
      host.Send(verb.command);
      break;
    case Deed::posted:
      host.Post(verb.command, false);
      break;
    case Deed::postedForOthers:
      host.Post(verb.command, true);
      break;
    case Deed::show:
      host.Show(verb.show);
      break;
    case Deed::find:
      Find(tokens, host);
      break;
    case Deed::setup:
      if (host.SetSetup(tokens.slots[1])) host.Post("reload-setup", false);
      break;
  }
}

// Whether the string holds a command that has to wait. It is looked through as it will be run.
bool MustWait(std::string_view text) {
  DdeTokens tokens;
  const auto length = static_cast<int>(text.size());
  for (int at = 0; (at = ParseDdeCommand(text.data(), length, at, tokens)) > 0;) {
    const Verb* const verb = FindVerb(tokens);
    if (verb == nullptr) return false;
    if (!verb->whenBusy) return true;
  }
  return false;
}

}  // namespace

DdeAnswer RunDdeString(std::string_view text, DdeHost& host) {
  text = text.substr(0, text.find('\0'));
  if (text.size() > kDdeCommandBytes) return DdeAnswer::notProcessed;
  if (host.IsBusy() && MustWait(text)) return DdeAnswer::busy;
  DdeTokens tokens;
  const auto length = static_cast<int>(text.size());
  int at = 0;
  while ((at = ParseDdeCommand(text.data(), length, at, tokens)) > 0) {
    const Verb* const verb = FindVerb(tokens);
    if (verb == nullptr) return DdeAnswer::notProcessed;
    Run(*verb, tokens, host);
  }
  return at == 0 ? DdeAnswer::accepted : DdeAnswer::notProcessed;
}
