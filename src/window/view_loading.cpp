#include "window/view_loading.h"

#include <algorithm>

#include "engine/file_code.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/notice.h"

namespace {

// A former run with more text than this is not kept.
constexpr std::int32_t kMostSpareText = 1 << 20;

// What one load works on.
struct LoadJob {
  MoveRequest request;
  bool onlyIfChanged;
  RunLines atHand;
  ViewFile file;
  std::shared_ptr<ViewRun> run;
  MoveResult result;
};

void RunLoad(LoadJob& job, ByteSource& source) {
  const FileError error = source.Open(job.file.Fname);
  if (error != 0) {
    job.result = {VS_FAILED, error, false};
  } else {
    ViewOptions& options = job.request.style.options;
    if ((options & VO_AUTOCODE) != 0) {
      job.file.Fcode = FindFileCode(source);
      options = (options & ~VO_AUTOCODE) | job.file.Fcode;
    }
    job.result = MoveWithLoads(job.request, job.onlyIfChanged, job.atHand, source, job.file, *job.run);
  }
}

std::shared_ptr<ViewRun> RunOfSize(const RunSize& size) {
  std::shared_ptr<ViewRun> spare = std::move(MainState.SpareRun);
  if (spare != nullptr && RunSize{spare->Lines.Acnt, spare->Text.Tlen} == size) return spare;
  return MakeRun(size);
}

}  // namespace

ViewOptions PresentOptions() {
  return OptionsFor(MainState, MainState.File.Fcode);
}

LineStyle PresentStyle() {
  MainWindowState& state = MainState;
  state.FormatIndex = std::clamp(state.FormatIndex, 0, kFormats - 1);
  const ViewOptions options = PresentOptions() | (state.ShowPageGap != 0 ? VO_PAGEGAP : 0);
  // Between two messages, and in a window narrower than a character, the width may be below 1.
  return {state.FormatRoutines[state.FormatIndex], options, std::max(state.FormatWidth, 1)};
}

MoveRequest RequestOf(MoveKind kind, std::int64_t delta, FilePos position) {
  MoveRequest request;
  request.kind = kind;
  request.delta = delta;
  request.position = position;
  request.held = MainState.HeldPosition;
  if (ErrorPageShown()) request.backFromError = std::max<FilePos>(MainState.TopBeforeError, 0);
  request.rows = std::clamp(VisibleRows(), 1, INT16_MAX / 4);
  request.padPageLength = std::max(MainState.PadPageLength, 0);
  request.style = PresentStyle();
  return request;
}

LoadOutcome LoadFor(const MoveRequest& request, const ViewFile& file, bool onlyIfChanged) {
  auto job = std::make_shared<LoadJob>();
  job->request = request;
  // The file need not be the open one.
  const ViewOptions former = request.style.options & ~(VO_UNICODE | VO_AUTOCODE);
  job->request.style.options = former | (OptionsFor(MainState, file.Fcode) & (VO_UNICODE | VO_AUTOCODE));
  job->onlyIfChanged = onlyIfChanged;
  job->atHand = LinesOf(MainState.Lines);
  job->file = file;
  job->run = RunOfSize(RunSizeFor(request.rows, request.style.lineLen));
  LoadOutcome outcome;
  if (job->run == nullptr) {
    outcome.end = WatchEnd::finished;
    outcome.result = {VS_FAILED, kFileNoMemory, false};
    return outcome;
  }
  outcome.end = RunWatched([job](ByteSource& source, LongJob& /*watch*/) { RunLoad(*job, source); });
  if (outcome.end != WatchEnd::finished) return outcome;
  outcome.result = job->result;
  outcome.file = job->file;
  outcome.run = std::move(job->run);
  if (outcome.result.unchanged) MainState.SpareRun = outcome.run;
  return outcome;
}

void TakeRun(std::shared_ptr<ViewRun> run) {
  MainWindowState& state = MainState;
  state.SpareRun = std::move(state.Run);
  if (state.SpareRun != nullptr && state.SpareRun->Text.Tlen > kMostSpareText) state.SpareRun = nullptr;
  state.Run = std::move(run);
  state.Lines = state.Run->Lines;
  state.Text = state.Run->Text;
}

bool ErrorPageShown() {
  const LineArray& lines = MainState.Lines;
  return lines.Acur < lines.Alast && (lines.Aline[lines.Acur].Lflags & LF_MESSAGE) != 0;
}

bool AskFileLength() {
  struct Answer {
    std::string path;
    FileError error = 0;
    FilePos length = 0;
  };
  auto answer = std::make_shared<Answer>();
  answer->path = MainState.File.Fname;
  const WatchEnd end = RunWatched([answer](ByteSource& source, LongJob& /*watch*/) {
    answer->error = source.Open(answer->path.c_str());
    answer->length = source.Length();
  });
  if (end != WatchEnd::finished) return false;
  if (answer->error != 0) {
    TellReadError(MainState.File.Fname, answer->error);
    return false;
  }
  MainState.File.Flen = answer->length;
  return true;
}

void TellReadError(const char* path, FileError error) {
  MessageBeep(MB_ICONEXCLAMATION);
  ShowNotice(std::string(BaseName(path)) + ": " + FileErrorText(error));
}
