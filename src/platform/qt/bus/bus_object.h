// The viewer as an object of the session bus. What is called there is kept until the message loop comes by,
// as input is, so that the program is never called from inside the toolkit, and one call ends before the next
// begins.
#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <deque>
#include <string>

#include "platform/bus.h"
#include "platform/ddeml.h"

// The handles of the service, which nobody else makes.
struct HSZ__ {
  std::string text;
};
struct HDDEDATA__ {
  std::string bytes;
};

namespace platform_qt {

class BusObject : public QDBusVirtualObject {
 public:
  // The one object, which stays when the service ends.
  static BusObject& Get();
  // Whether anybody has asked for it.
  static bool IsThere();
  BusObject(const BusObject&) = delete;
  BusObject& operator=(const BusObject&) = delete;

  void Offer(BusHost host) { host_ = std::move(host); }
  // Takes the names on the bus; command strings go to `callback`. False when that of this process is not to
  // be had.
  bool Register(HSZ service, PFNCALLBACK callback);
  // Gives the names back. Calls that wait are refused.
  void Unregister();
  void Publish();

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  // Runs the call that came first, unless one runs.
  void ServeCall();

 private:
  BusObject();

  // What a call is answered with, once it has run.
  QDBusMessage Answer(const QDBusMessage& call);
  QDBusMessage CallViewer(const QDBusMessage& call);
  QDBusMessage Execute(const QDBusMessage& call);
  QDBusMessage CallApplication(const QDBusMessage& call);
  [[nodiscard]] QDBusMessage Property(const QDBusMessage& call) const;
  [[nodiscard]] QVariantMap Properties() const;

  BusHost host_;
  PFNCALLBACK callback_ = nullptr;
  HSZ service_ = nullptr;  // null: the service does not run
  qint64 started_;
  std::deque<QDBusMessage> calls_;
  bool serving_ = false;
  BusState told_;
  HWND window_;  // to which calls are addressed in the queue
};

}  // namespace platform_qt
