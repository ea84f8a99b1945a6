#include "window/service/dde_service.h"

#include <string>

#include "dde/dde_command.h"
#include "dde/dde_verbs.h"
#include "platform/ddeml.h"
#include "window/command_table.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

constexpr const char* kServiceName = "Quorl";
constexpr const char* kTopicName = "System";
constexpr DWORD kNoOthers = CBF_FAIL_SELFCONNECTIONS | CBF_FAIL_ADVISES | CBF_FAIL_POKES | CBF_FAIL_REQUESTS |
                            CBF_SKIP_ALLNOTIFICATIONS;

UINT NumberOf(std::string_view name) {
  const auto* const command =
      std::ranges::find(kCommands, name, [](const Command& row) { return std::string_view(row.name); });
  return command == std::end(kCommands) ? 0 : command->id;
}

class WindowHost : public DdeHost {
 public:
  WindowHost() = default;
  WindowHost(HWND window, const DdeLinks& links) : window_(window), links_(links) {}

  [[nodiscard]] HWND Window() const { return window_; }
  [[nodiscard]] bool IsBusy() const override { return links_.isBusy(); }
  void Open(const char* path) override {
    SendMessageA(window_, WM_FILE_TRY, 0, reinterpret_cast<LPARAM>(path));
  }
  void Close() override { PostMessageA(window_, WM_CLOSE, 0, 0); }
  void Send(std::string_view command) override { SendMessageA(window_, WM_COMMAND, NumberOf(command), 0); }
  void Post(std::string_view command, bool forOthers) override {
    PostMessageA(window_, WM_COMMAND, NumberOf(command), forOthers ? 1 : 0);
  }
  void Show(int how) override { ShowWindow(window_, how); }
  SearchState& Search() override { return *links_.search; }
  [[nodiscard]] ViewOptions FileCode() const override { return PresentOptions() & VO_UNICODE; }
  bool SetSetup(std::string_view section) override { return links_.setSetup(section); }

 private:
  HWND window_ = nullptr;
  DdeLinks links_;
};

struct Service {
  DWORD instance = 0;
  HSZ name = nullptr;
  HSZ topic = nullptr;
  WindowHost host;
};
Service service;

HDDEDATA AnswerOf(ULONG_PTR number) {
  return reinterpret_cast<HDDEDATA>(number);
}

HDDEDATA Execute(HSZ topic, HDDEDATA data) {
  if (DdeCmpStringHandles(topic, service.topic) != 0) return AnswerOf(DDE_FNOTPROCESSED);
  const DWORD length = DdeGetData(data, nullptr, 0, 0);
  if (length > kDdeCommandBytes) return AnswerOf(DDE_FNOTPROCESSED);
  std::string text(length, '\0');
  DdeGetData(data, reinterpret_cast<BYTE*>(text.data()), length, 0);
  switch (RunDdeString(text, service.host)) {
    case DdeAnswer::accepted:
      return AnswerOf(DDE_FACK);
    case DdeAnswer::busy:
      return AnswerOf(DDE_FBUSY);
    case DdeAnswer::notProcessed:
      break;
  }
  return AnswerOf(DDE_FNOTPROCESSED);
}

HDDEDATA CALLBACK DdeCallback(UINT type, UINT /*format*/, HCONV /*conversation*/, HSZ one, HSZ other,
                              HDDEDATA data, ULONG_PTR /*data1*/, ULONG_PTR /*data2*/) {
  if (type == XTYP_CONNECT) {
    const bool ours =
        DdeCmpStringHandles(one, service.topic) == 0 && DdeCmpStringHandles(other, service.name) == 0;
    return AnswerOf(ours ? 1 : 0);
  }
  return type == XTYP_EXECUTE ? Execute(one, data) : AnswerOf(DDE_FNOTPROCESSED);
}

void TellFailure(const char* text) {
  char caption[256];
  GetWindowTextA(service.host.Window(), caption, sizeof caption);
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(service.host.Window(), text, caption, MB_ICONEXCLAMATION);
}

}  // namespace

int DdeStart(HINSTANCE /*instance*/, HWND window, const DdeLinks& links) {
  service.host = WindowHost(window, links);
  if (DdeInitializeA(&service.instance, DdeCallback, kNoOthers, 0) != DMLERR_NO_ERROR) {
    service.instance = 0;
    TellFailure("DDE Initialize failed.\nServer functions disabled.");
    return 0;
  }
  service.name = DdeCreateStringHandleA(service.instance, kServiceName, CP_WINANSI);
  service.topic = DdeCreateStringHandleA(service.instance, kTopicName, CP_WINANSI);
  if (DdeNameService(service.instance, service.name, nullptr, DNS_REGISTER) == nullptr) {
    TellFailure("DDE Name Service [Register] failed...");
  }
  return 1;
}

void DdeStop() {
  if (service.instance == 0) return;
  DdeFreeStringHandle(service.instance, service.name);
  DdeFreeStringHandle(service.instance, service.topic);
  DdeUninitialize(service.instance);
  service = {};
}
