// The hits of the search that stand on the screen: found by a job that nobody waits for, behind each paint
// that shows other lines than before, and lit within their rows. The rows themselves never wait for it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/win32.h"
#include "search/search_engine.h"

inline constexpr UINT_PTR kLitHitsTimer = 4;

// Columns of a row that are lit.
struct LitSpan {
  FilePos row;  // where the row begins
  std::int32_t first;
  std::int32_t end;  // exclusive
  bool isSelected;   // of the hit that the last Find Next gave
  bool operator==(const LitSpan&) const = default;
};

// The spans of the row that begins at `row`, from left to right.
[[nodiscard]] std::span<const LitSpan> LitIn(FilePos row);

// Called behind each paint: looks for the hits of the lines that are on the screen now, soon.
void LookForHits();
// A tick of the timer that LookForHits sets.
void LightHits();

// The hit that is the selection becomes visible sideways. The view must show its row.
void ShowHitColumns(const Hit& hit);
