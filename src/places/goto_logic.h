// What Go To decides: which field goes with a choice, which numbers it accepts, and what the answer does to
// the view. Knows no dialog and moves nothing: the dialog carries texts to and fro, the command sends the
// messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/file_pos.h"
#include "settings/field_checks.h"

// What the dialog works with. It is taken when the dialog opens and holds until it closes.
struct GoToLimits {
  FilePos fileLength = 0;
  std::int64_t pageCount = -1;  // pages known so far; -1: the page index cannot serve
  bool morePages = false;  // further ones may follow: any number may be typed, and the page is searched then
};

enum class GoToChoice : std::int32_t { none = 0, top = 1, bottom = 2, bytePosition = 3, pageNumber = 4 };

// Whether the dialog offers the choice of a page.
[[nodiscard]] bool GoToOffersPages(const GoToLimits& limits);

// What the edit field and the range text hold when a choice is made. An enabled field gets the focus, all of
// its text selected.
struct GoToField {
  std::string text;
  std::string range;
  bool enabled = false;
};
[[nodiscard]] GoToField GoToFieldOf(GoToChoice choice, const GoToLimits& limits);

// Whether OK may be pressed with this text in the field: a number, or for a byte any place (places/place.h).
// Top and bottom always pass; no choice never does, without a message.
[[nodiscard]] FieldCheck GoToValidate(GoToChoice choice, std::string_view text, const GoToLimits& limits);

// The dialog's answer.
struct GoToAnswer {
  GoToChoice choice = GoToChoice::none;
  std::int64_t value = -1;  // the number typed; 0 for the top, 9999999 for the bottom, -1 for no choice
};
[[nodiscard]] GoToAnswer GoToRead(GoToChoice choice, std::string_view text, FilePos fileLength);

// What the command is to do.
enum class GoToMove : std::int32_t {
  none,
  top,     // post WM_VSCROLL with SB_TOP
  bottom,  // post WM_VSCROLL with SB_BOTTOM
  load,    // send WM_VIEW_GOTO to the position, which loads the view from that byte in any case
  page,  // find the page, which may take long; then post WM_VIEW_MOVE to where it starts. If it is not found,
         // the box of an invalid page, with the beep and icon of a warning; the view stays
};
struct GoToTarget {
  GoToMove move = GoToMove::none;
  FilePos position = kNoPosition;  // of `load`
  std::int64_t page = 0;           // of `page`
};
inline constexpr const char* kInvalidPageCaption = "Go To Page";
inline constexpr const char* kInvalidPageText = "Invalid page number.";

// Turns the answer into a move in a file of `fileLength` bytes.
[[nodiscard]] GoToTarget GoToTargetOf(const GoToAnswer& answer, FilePos fileLength);

// `length` * `part` / `whole`, rounded down, without a product that needs more than 64 bits. 0 <= part <=
// whole, and whole is at least 1.
[[nodiscard]] FilePos PositionOfShare(FilePos length, std::int64_t part, std::int64_t whole);
