// What the window does while a search runs: shows the wait cursor, repaints, tells in the caption how far the
// search is, and ends it when the user wants so. Only paints, keys and the wish to close are looked at;
// timers and posted messages wait until the search has returned. Knows no search, only the progress that it
// reports.
#pragma once

#include <chrono>
#include <string>

#include "platform/win32.h"
#include "search/search_engine.h"

// The caption of a window that is otherwise called `caption`, when a search has reached `position` of `end`.
[[nodiscard]] std::string SearchCaption(const std::string& caption, FilePos position, FilePos end);

// Lives as long as the search, and puts cursor and caption back.
class SearchWatch {
 public:
  // Most searches are over before a user could read a caption: it changes after `quiet` only.
  explicit SearchWatch(std::chrono::milliseconds quiet = std::chrono::milliseconds(250));
  ~SearchWatch();
  SearchWatch(const SearchWatch&) = delete;
  SearchWatch& operator=(const SearchWatch&) = delete;

  // For the search; good as long as this object lives.
  [[nodiscard]] SearchProgress Progress();

  // Whether the search may go on, once the window has been served. Esc ends it, and so does a wish to close,
  // which stays in the queue. Other keys are dropped.
  [[nodiscard]] bool Report(FilePos position, FilePos end);

 private:
  void ShowCaption(const std::string& text);

  std::chrono::steady_clock::time_point showFrom_;
  std::string caption_;  // as it was
  std::string shown_;    // empty: caption_
  ULONG_PTR classCursor_;
  HCURSOR cursor_;
};
