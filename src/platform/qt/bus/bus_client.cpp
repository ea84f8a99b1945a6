// One program that speaks to the viewers on the session bus.
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <algorithm>

#include "platform/bus.h"
#include "platform/qt/bus/bus_names.h"

using namespace platform_qt;

namespace {

constexpr int kPatienceMs = 10'000;  // for an answer

QDBusMessage CallTo(qint64 process, const char* interface, const char* member) {
  return QDBusMessage::createMethodCall(InstanceName(process), QString::fromUtf8(kBusPath),
                                        QString::fromUtf8(interface), QString::fromUtf8(member));
}

QDBusMessage Ask(const QDBusMessage& call) {
  return QDBusConnection::sessionBus().call(call, QDBus::Block, kPatienceMs);
}

}  // namespace

std::optional<std::vector<BusViewer>> ViewersOnBus() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    return std::nullopt;
  }
  std::vector<BusViewer> viewers;
  const QString prefix = QString::fromUtf8(kInstancePrefix);
  const QStringList names = bus.interface()->registeredServiceNames().value();
  for (const QString& name : names) {
    if (!name.startsWith(prefix)) {
      continue;
    }
    BusViewer viewer;
    viewer.process = name.mid(prefix.size()).toLongLong();
    QDBusMessage call = CallTo(viewer.process, kPropertiesInterface, "GetAll");
    call << QString::fromUtf8(kViewerInterface);
    const QDBusMessage answer = Ask(call);
    if (answer.type() != QDBusMessage::ReplyMessage) {
      continue;  // gone meanwhile
    }
    const QVariantMap properties = qdbus_cast<QVariantMap>(answer.arguments().value(0));
    viewer.started = properties.value(QStringLiteral("Started")).toLongLong();
    viewer.file = properties.value(QStringLiteral("File")).toString().toStdString();
    viewers.push_back(viewer);
  }
  std::sort(viewers.begin(), viewers.end(),
            [](const BusViewer& one, const BusViewer& other) { return one.started > other.started; });
  return viewers;
}

BusAnswer SendOverBus(std::int64_t process, const std::string& commands, std::string& why) {
  QDBusMessage call = CallTo(process, kViewerInterface, "Execute");
  call << QString::fromStdString(commands);
  const QDBusMessage answer = Ask(call);
  if (answer.type() == QDBusMessage::ReplyMessage) {
    return BusAnswer::accepted;
  }
  why = answer.errorMessage().toStdString();
  const bool nobody = answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
                      answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
  return nobody ? BusAnswer::nobody : BusAnswer::refused;
}
