#include "engine/view_moves.h"

#include "engine/page_padding.h"
#include "engine/text_format.h"

namespace {

// A move of more loads than this stays where it has got to.
constexpr int kMostLoads = 500;

bool IsPadding(const LineEntry& line) {
  return (line.Lflags & LF_PADDING) != 0;
}

// Some lines with their indices: those of a run, or those that a run had.
struct Span {
  const LineEntry* lines;  // by index
  std::int32_t first, last;
  std::int32_t top;

  [[nodiscard]] const LineEntry& At(std::int64_t index) const { return lines[index]; }
  [[nodiscard]] FilePos End() const { return lines[last].Lpos; }
  [[nodiscard]] bool Holds(std::int64_t index) const { return index >= first && index < last; }
  [[nodiscard]] std::int32_t LineOf(FilePos position) const {
    const LineEntry* const behind =
        std::upper_bound(lines + first, lines + last + 1, position,
                         [](FilePos pos, const LineEntry& line) { return pos < line.Lpos; });
    return std::max(static_cast<std::int32_t>(behind - lines) - 1, first);
  }
  // Whether `rows` rows stand from line `index` on.
  [[nodiscard]] bool Fills(std::int64_t index, std::int32_t rows) const {
    return index >= first && index + rows <= last;
  }
  // The move stops at the top and the bottom of a file of `length` bytes.
  [[nodiscard]] std::int64_t StopAtEnds(std::int64_t index, FilePos length) const {
    if (index < first && lines[first].Lpos == 0) index = first;
    if (index >= last && End() >= length) index = std::max(last - 1, first);
    return index;
  }
};

Span SpanOf(const LineArray& lines) {
  return {lines.Aline, lines.Afirst, lines.Alast, lines.Acur};
}
Span SpanOf(const RunLines& lines) {
  return {lines.lines.data() - lines.first, lines.first,
          lines.first + static_cast<std::int32_t>(lines.lines.size()) - 1, lines.top};
}

bool TopLineHolds(const Span& lines, FilePos position) {
  return lines.top < lines.last && lines.At(lines.top).Lpos <= position &&
         position < lines.At(lines.top + 1).Lpos;
}

// One move that needs loads.
class Walk {
 public:
  Walk(const MoveRequest& request, const RunLines& atHand, ByteSource& source, ViewFile& file, ViewRun& run)
      : request_(request), lines_(SpanOf(atHand)), source_(source), file_(file), run_(run) {}

  MoveResult Run(FilePos knownLength);

 private:
  bool Load(FilePos pos, std::int32_t below);
  void To(std::int64_t target, bool mustLoad);
  bool Towards(std::int64_t& target);
  void Reload();
  [[nodiscard]] FilePos Length() const { return source_.Length(); }

  const MoveRequest& request_;
  Span lines_;  // those at hand: the caller's, and after the first load the new run's
  ByteSource& source_;
  ViewFile& file_;
  ViewRun& run_;
  bool loaded_ = false;
  MoveResult result_;
};

// Loads around `pos`; the run made is at hand then. False when it failed.
bool Walk::Load(FilePos pos, std::int32_t below) {
  const bool pads = request_.padPageLength > 0;
  const std::int32_t above = pads ? std::min(request_.padPageLength, LongestPaddedPage(run_.Lines)) + 1 : 2;
  const LoadRequest load{pos, below, request_.rows, above, request_.style};
  const ViewStatus status = LoadView(load, source_, file_, run_.Lines, run_.Text);
  if ((status & VS_FAILED) != 0) {
    result_ = {status, source_.Failure(), false};
    return false;
  }
  if (pads) {
    PadPages(run_.Lines, run_.Text, file_.Flen, request_.padPageLength);
    DropUnknownPage(run_.Lines, request_.padPageLength);
  }
  lines_ = SpanOf(run_.Lines);
  loaded_ = true;
  return true;
}

// One load that brings the target nearer, which lies outside the run or too near to its end; `target` becomes
// its index in the new run. False when it failed.
bool Walk::Towards(std::int64_t& target) {
  const bool up = target < lines_.first;
  std::int64_t anchor = 0;
  if (up) {
    // The line that will lie below the last row, so that a short step above the run takes one load.
    anchor = std::clamp<std::int64_t>(target + request_.rows, lines_.first, lines_.last);
    while (anchor < lines_.last && IsPadding(lines_.At(anchor)))
      ++anchor;
  } else {
    // The last line rather than the sentinel: it may have become longer.
    anchor = std::clamp<std::int64_t>(target, lines_.first, std::max(lines_.last - 1, lines_.first));
    while (anchor > lines_.first && IsPadding(lines_.At(anchor)))
      --anchor;
  }
  const FilePos position = lines_.At(anchor).Lpos;
  const std::int64_t rest = target - anchor;
  if (!Load(position, up ? static_cast<std::int32_t>(std::min<std::int64_t>(-rest, request_.rows)) : -1)) {
    return false;
  }
  target = lines_.LineOf(position) + rest;
  return true;
}

// Moves to the target line of the lines at hand.
void Walk::To(std::int64_t target, bool mustLoad) {
  FilePos first = lines_.At(lines_.first).Lpos;
  FilePos last = lines_.End();
  for (int loads = 0; loads < kMostLoads; ++loads) {
    target = lines_.StopAtEnds(target, Length());
    const bool reachesEnd = lines_.Holds(target) && lines_.End() >= Length();
    if (!mustLoad && (lines_.Fills(target, request_.rows) || (loaded_ && reachesEnd))) break;
    const bool inside = lines_.Holds(target);
    if (!Towards(target)) return;
    mustLoad = false;
    // A line that is on top as it should be is as near as can be.
    if (inside && target == lines_.top) break;
    // A run that reaches no further than the one before leads nowhere.
    if (loads > 0 && lines_.At(lines_.first).Lpos >= first && lines_.End() <= last) break;
    first = lines_.At(lines_.first).Lpos;
    last = lines_.End();
  }
  if (!loaded_) return;
  const std::int64_t lastLine = std::max(lines_.last - 1, lines_.first);
  run_.Lines.Acur = static_cast<std::int16_t>(std::clamp<std::int64_t>(target, lines_.first, lastLine));
}

// The same top line, made anew. Wrapped rows begin elsewhere when the width has changed: the byte that was
// held stays on the top line, so that resizing a window back and forth does not move the view.
void Walk::Reload() {
  const FilePos top = lines_.At(lines_.top).Lpos;
  const bool text = request_.style.format == FormatText;
  Load(text && TopLineHolds(lines_, request_.held) ? request_.held : top, -1);
}

MoveResult Walk::Run(FilePos knownLength) {
  const bool errorPage = request_.backFromError >= 0;
  // What was the end when the move was asked for means the end that there is now.
  const bool toEnd = request_.kind == MoveKind::move && knownLength > 0 && request_.position == knownLength;
  const FilePos position = toEnd ? kFileEnd : request_.position;
  const std::int64_t target = lines_.top + request_.delta;
  if (position >= 0) {
    const bool inside = lines_.At(lines_.first).Lpos <= position && position <= lines_.End();
    if (inside && !errorPage && request_.kind == MoveKind::move) {
      To(lines_.LineOf(position), true);
    } else {
      Load(position, -1);
    }
  } else if (errorPage) {
    // The lines of the error page have no place in the file: go back to where the view was.
    Load(request_.backFromError, -1);
  } else if (request_.delta == 0) {
    Reload();
  } else {
    To(target, request_.kind != MoveKind::move);
  }
  return result_;
}

}  // namespace

AtHandAnswer MoveAtHand(const MoveRequest& request, const ViewFile& file, const LineArray& lines) {
  if (request.kind != MoveKind::move) return {};
  const Span span = SpanOf(lines);
  std::int64_t target = lines.Acur + request.delta;
  const auto answer = [&target](AtHand atHand) {
    return AtHandAnswer{atHand, static_cast<std::int16_t>(target)};
  };
  if (request.backFromError >= 0) {
    // A step within the error page, as long as rows of it are below the screen; above it lies the file.
    if (request.position >= 0 || target < span.first) return {};
    target = std::clamp<std::int64_t>(span.last - request.rows, span.first, target);
    return answer(AtHand::serve);
  }
  if (request.position >= 0) {
    const bool inside = span.At(span.first).Lpos <= request.position && request.position <= span.End();
    const bool atEnd = request.position >= file.Flen && span.End() >= file.Flen;
    if (!inside && !atEnd) return {};
    target = span.LineOf(request.position);
  }
  target = span.StopAtEnds(target, file.Flen);
  if (span.Fills(target, request.rows)) return answer(AtHand::serve);
  if (target >= span.first && span.End() >= file.Flen) return answer(AtHand::serveToEnd);
  return {};
}

RunLines LinesOf(const LineArray& lines) {
  return {{lines.Aline + lines.Afirst, lines.Aline + lines.Alast + 1}, lines.Afirst, lines.Acur};
}

MoveResult MoveWithLoads(const MoveRequest& request, bool onlyIfChanged, const RunLines& atHand,
                         ByteSource& source, ViewFile& file, ViewRun& run) {
  if (onlyIfChanged && source.Identity() == file.Fid) return {0, 0, true};
  return Walk(request, atHand, source, file, run).Run(file.Flen);
}

std::int32_t LineOf(const LineArray& lines, FilePos position) {
  return SpanOf(lines).LineOf(position);
}
