// The working copy of the option words while the user chooses how files are shown: each format keeps its own
// word while the user goes from one to the other, and nothing reaches the options before Apply.
#pragma once

#include "settings/format_options.h"

// The bits of an option word that the user ticks.
inline constexpr ViewOptions kTickedOptions = VO_WRAP | VO_BACKGROUND | VO_FIXEDLEN | VO_EXPANDTABS;

class FormatEdit {
 public:
  // Begins with the stored words, and with the format in use on show.
  explicit FormatEdit(const FormatOptions& options);

  // The word of the format on show.
  [[nodiscard]] ViewOptions Shown() const { return words_[shown_]; }
  // Takes `ticked` for the format on show, and turns to another one.
  void TurnTo(std::int32_t format, ViewOptions ticked);
  // Makes the words, the format on show with `ticked` and the character code those of the options.
  void Apply(ViewOptions ticked, std::int32_t code, FormatOptions& options);

 private:
  // Of the other bits a word that was ticked holds VO_FORMFEED alone.
  void Take(ViewOptions ticked) { words_[shown_] = (ticked & kTickedOptions) | VO_FORMFEED; }

  ViewOptions words_[kFormats];
  std::int32_t shown_;
};
