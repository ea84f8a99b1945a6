#include "settings/format_edit.h"

#include <algorithm>
#include <iterator>

FormatEdit::FormatEdit(const FormatOptions& options) : shown_(options.FormatIndex) {
  std::ranges::copy(options.StoredFlags, words_);
}

void FormatEdit::TurnTo(std::int32_t format, ViewOptions ticked) {
  Take(ticked);
  shown_ = format;
}

void FormatEdit::Apply(ViewOptions ticked, std::int32_t code, FormatOptions& options) {
  Take(ticked);
  std::ranges::copy(words_, options.StoredFlags);
  options.FormatIndex = shown_;
  options.FormatFlags = words_[shown_];
  options.CharCode = code;
  ApplyCharCode(options);
}
