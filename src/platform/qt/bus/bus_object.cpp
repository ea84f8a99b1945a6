#include "platform/qt/bus/bus_object.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDateTime>
#include <QUrl>
#include <QWidget>
#include <utility>

#include "platform/qt/bus/bus_names.h"
#include "platform/qt/windows/queue.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

namespace {

constexpr std::size_t kMostCalls = 64;  // that wait; more would keep keys waiting
constexpr const char* kTopic = "System";
constexpr int kMostBytes = 256;  // of a command string

constexpr const char* kIntrospection = R"(
  <interface name="org.quorl.Viewer">
    <method name="Execute"><arg name="commands" type="s" direction="in"/></method>
    <method name="Find">
      <arg name="key" type="s" direction="in"/>
      <arg name="options" type="as" direction="in"/>
      <arg name="position" type="x" direction="out"/>
    </method>
    <method name="GoTo">
      <arg name="place" type="s" direction="in"/>
      <arg name="position" type="x" direction="out"/>
    </method>
    <method name="Rows"><arg name="rows" type="as" direction="out"/></method>
    <method name="Copy"><arg name="text" type="s" direction="out"/></method>
    <method name="Cancel"/>
    <property name="File" type="s" access="read"/>
    <property name="Length" type="x" access="read"/>
    <property name="Position" type="x" access="read"/>
    <property name="Format" type="s" access="read"/>
    <property name="Busy" type="b" access="read"/>
    <property name="Started" type="x" access="read"/>
  </interface>
  <interface name="org.freedesktop.Application">
    <method name="Activate"><arg name="platform_data" type="a{sv}" direction="in"/></method>
    <method name="Open">
      <arg name="uris" type="as" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg name="action_name" type="s" direction="in"/>
      <arg name="parameter" type="av" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
  </interface>
)";

// Never destroyed: a call may still run when the service ends.
BusObject* theObject = nullptr;

// Calls wait in the queue as messages of this window, which is never shown.
constexpr UINT kCallWaits = 0xFFFF0002U;

LRESULT CALLBACK CallProcedure(HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  if (message == kCallWaits) {
    BusObject::Get().ServeCall();
  }
  return 0;
}

struct CallWindow : HWND__ {
  CallWindow() : HWND__(CallProcedure) { Attach(this, place); }
  [[nodiscard]] std::string Text() const override { return {}; }
  void SetText(const char* /*text*/) override {}
  QWidget place;
};

QDBusMessage Busy(const QDBusMessage& call) {
  return call.createErrorReply(QStringLiteral("org.quorl.Error.Busy"),
                               QStringLiteral("the viewer is busy with a dialog, a search or a print job"));
}

QDBusMessage Wrong(const QDBusMessage& call, const char* what) {
  return call.createErrorReply(QDBusError::InvalidArgs, QString::fromUtf8(what));
}

QVariantMap MapOf(const BusState& state) {
  return {{QStringLiteral("File"), QString::fromStdString(state.file)},
          {QStringLiteral("Length"), qint64{state.length}},
          {QStringLiteral("Position"), qint64{state.position}},
          {QStringLiteral("Format"), QString::fromStdString(state.format)},
          {QStringLiteral("Busy"), state.busy}};
}

}  // namespace

BusObject& BusObject::Get() {
  if (theObject == nullptr) {
    theObject = new BusObject;
  }
  return *theObject;
}

bool BusObject::IsThere() {
  return theObject != nullptr;
}

BusObject::BusObject() : started_(QDateTime::currentMSecsSinceEpoch()), window_(new CallWindow) {}

bool BusObject::Register(HSZ service, PFNCALLBACK callback) {
  service_ = service;
  callback_ = callback;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.registerVirtualObject(QString::fromUtf8(kBusPath), this)) {
    return false;
  }
  QDBusConnectionInterface& names = *bus.interface();
  names.registerService(QString::fromUtf8(kBusName), QDBusConnectionInterface::QueueService);
  const auto own = names.registerService(InstanceName(QCoreApplication::applicationPid()));
  return own.isValid() && own.value() == QDBusConnectionInterface::ServiceRegistered;
}

void BusObject::Unregister() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  for (const QDBusMessage& call : std::exchange(calls_, {})) {
    bus.send(call.createErrorReply(QDBusError::ServiceUnknown, QStringLiteral("the viewer serves no more")));
  }
  service_ = nullptr;
  if (!bus.isConnected()) {
    return;
  }
  bus.unregisterService(QString::fromUtf8(kBusName));
  bus.unregisterService(InstanceName(QCoreApplication::applicationPid()));
  bus.unregisterObject(QString::fromUtf8(kBusPath));
}

QString BusObject::introspect(const QString& /*path*/) const {
  return QString::fromUtf8(kIntrospection);
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const QString interface = message.interface();
  if (interface == QLatin1String(kPropertiesInterface)) {
    return connection.send(Property(message));
  }
  if (interface != QLatin1String(kViewerInterface) && interface != QLatin1String(kApplicationInterface)) {
    return false;
  }
  if (message.member() == QLatin1String("Cancel")) {
    host_.cancel();
    return connection.send(message.createReply());
  }
  // A call that goes on, as a search does, holds all others off.
  if (calls_.size() >= kMostCalls || (serving_ && host_.state().busy)) {
    return connection.send(Busy(message));
  }
  message.setDelayedReply(true);
  calls_.push_back(message);
  AppendInput(window_, kCallWaits, 0, 0, 0);
  return true;
}

void BusObject::ServeCall() {
  if (serving_ || calls_.empty()) {
    return;
  }
  serving_ = true;
  const QDBusMessage call = calls_.front();
  calls_.pop_front();
  const QDBusMessage answer = Answer(call);
  if (call.isReplyRequired()) {
    QDBusConnection::sessionBus().send(answer);
  }
  serving_ = false;
  // Those that came meanwhile were not served.
  for (std::size_t i = 0; i < calls_.size(); ++i) {
    AppendInput(window_, kCallWaits, 0, 0, 0);
  }
}

QDBusMessage BusObject::Answer(const QDBusMessage& call) {
  if (service_ == nullptr) {
    return call.createErrorReply(QDBusError::ServiceUnknown, QStringLiteral("the viewer serves no more"));
  }
  return call.interface() == QLatin1String(kViewerInterface) ? CallViewer(call) : CallApplication(call);
}

QDBusMessage BusObject::CallViewer(const QDBusMessage& call) {
  const QString member = call.member();
  const QVariantList arguments = call.arguments();
  const QString wanted = member == QLatin1String("Find") ? QStringLiteral("sas")
                         : member == QLatin1String("Rows") || member == QLatin1String("Copy")
                             ? QString()
                             : QStringLiteral("s");
  if (call.signature() != wanted) {
    return Wrong(call, "the arguments are of other types");
  }
  if (member == QLatin1String("Execute")) {
    return Execute(call);
  }
  const std::string first = arguments.value(0).toString().toStdString();
  const auto run = [&call, this](const std::function<BusResult()>& request, auto valueOf) {
    if (host_.state().busy) {
      return Busy(call);
    }
    const BusResult result = request();
    return result.error == nullptr
               ? call.createReply(QVariant(valueOf(result)))
               : call.createErrorReply(QStringLiteral("org.quorl.Error.") + QString::fromUtf8(result.error),
                                       QString::fromStdString(result.why));
  };
  const auto position = [](const BusResult& result) { return qint64{result.position}; };
  if (member == QLatin1String("Find")) {
    std::vector<std::string> options;
    for (const QString& option : arguments.value(1).toStringList()) {
      options.push_back(option.toStdString());
    }
    return run([&] { return host_.find(first, options); }, position);
  }
  if (member == QLatin1String("GoTo")) {
    return run([&] { return host_.goTo(first); }, position);
  }
  if (member == QLatin1String("Rows")) {
    return run(host_.rows, [](const BusResult& result) {
      QStringList rows;
      for (const std::string& row : result.texts) {
        rows.append(QString::fromStdString(row));
      }
      return rows;
    });
  }
  if (member == QLatin1String("Copy")) {
    return run(host_.copy,
               [](const BusResult& result) { return QString::fromStdString(result.texts.front()); });
  }
  return call.createErrorReply(QDBusError::UnknownMethod, member);
}

QDBusMessage BusObject::Execute(const QDBusMessage& call) {
  HDDEDATA__ data{call.arguments().front().toString().toStdString()};
  if (data.bytes.size() > kMostBytes) {
    return call.createErrorReply(QStringLiteral("org.quorl.Error.TooLong"),
                                 QStringLiteral("a command string has at most 256 bytes"));
  }
  HSZ__ topic{kTopic};
  const auto number = [](HDDEDATA answer) { return reinterpret_cast<ULONG_PTR>(answer); };
  if (number(callback_(XTYP_CONNECT, 0, nullptr, &topic, service_, nullptr, 0, 0)) == 0) {
    return call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("the viewer takes no commands"));
  }
  const ULONG_PTR answer = number(callback_(XTYP_EXECUTE, 0, nullptr, &topic, nullptr, &data, 0, 0));
  if (answer == DDE_FBUSY) {
    return Busy(call);
  }
  return answer == DDE_FACK
             ? call.createReply()
             : call.createErrorReply(
                   QStringLiteral("org.quorl.Error.NotProcessed"),
                   QStringLiteral("a command was not understood; those in front of it have run"));
}

QDBusMessage BusObject::CallApplication(const QDBusMessage& call) {
  const QVariantList arguments = call.arguments();
  const QString signature = call.signature();
  if (call.member() == QLatin1String("Activate") && signature == QLatin1String("a{sv}")) {
    host_.activate();
    return call.createReply();
  }
  if (call.member() == QLatin1String("Open") && signature == QLatin1String("asa{sv}")) {
    const QStringList names = arguments.front().toStringList();
    const QUrl url(names.value(0));
    if (names.size() != 1 || !url.isLocalFile()) {
      return Wrong(call, "Open takes the URI of one file of this machine");
    }
    if (host_.state().busy) {
      return Busy(call);
    }
    host_.activate();
    host_.open(QUrl::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8()).toStdString());
    return call.createReply();
  }
  if (call.member() == QLatin1String("ActivateAction") && signature == QLatin1String("sava{sv}")) {
    if (host_.state().busy) {
      return Busy(call);
    }
    return host_.action(arguments.front().toString().toStdString()) ? call.createReply()
                                                                    : Wrong(call, "there is no such action");
  }
  return call.createErrorReply(QDBusError::UnknownMethod, call.member());
}

QVariantMap BusObject::Properties() const {
  QVariantMap properties = MapOf(host_.state());
  properties.insert(QStringLiteral("Started"), started_);
  return properties;
}

QDBusMessage BusObject::Property(const QDBusMessage& call) const {
  const QVariantList arguments = call.arguments();
  const bool viewers = arguments.value(0).toString() == QLatin1String(kViewerInterface);
  if (call.member() == QLatin1String("GetAll")) {
    return call.createReply(viewers ? Properties() : QVariantMap());
  }
  const QString name = arguments.value(1).toString();
  const QVariantMap properties = Properties();
  if (!viewers || !properties.contains(name)) {
    return call.createErrorReply(QDBusError::UnknownProperty, name);
  }
  if (call.member() == QLatin1String("Set")) {
    return call.createErrorReply(QDBusError::PropertyReadOnly, name);
  }
  return call.createReply(QVariant::fromValue(QDBusVariant(properties.value(name))));
}

void BusObject::Publish() {
  if (service_ == nullptr) {
    return;
  }
  const BusState state = host_.state();
  if (state == told_) {
    return;
  }
  QVariantMap changed;
  const QVariantMap before = MapOf(std::exchange(told_, state));
  const QVariantMap now = MapOf(state);
  for (auto property = now.begin(); property != now.end(); ++property) {
    if (before.value(property.key()) != property.value()) {
      changed.insert(property.key(), property.value());
    }
  }
  QDBusMessage signal =
      QDBusMessage::createSignal(QString::fromUtf8(kBusPath), QString::fromUtf8(kPropertiesInterface),
                                 QStringLiteral("PropertiesChanged"));
  signal << QString::fromUtf8(kViewerInterface) << changed << QStringList();
  QDBusConnection::sessionBus().send(signal);
}

}  // namespace platform_qt

using namespace platform_qt;

void OfferOnBus(BusHost host) {
  BusObject::Get().Offer(std::move(host));
}

void PublishBusState() {
  // Painting calls this, also where nobody is served.
  if (BusObject::IsThere()) {
    BusObject::Get().Publish();
  }
}
