// The names of viewers on the session bus.
#pragma once

#include <QString>

namespace platform_qt {

inline constexpr const char* kBusName = "org.quorl.Quorl";
inline constexpr const char* kBusPath = "/org/quorl/Quorl";
inline constexpr const char* kInstancePrefix = "org.quorl.Quorl.Instance";
inline constexpr const char* kViewerInterface = "org.quorl.Viewer";
inline constexpr const char* kApplicationInterface = "org.freedesktop.Application";
inline constexpr const char* kPropertiesInterface = "org.freedesktop.DBus.Properties";

// The name that a viewer's process owns alone.
[[nodiscard]] inline QString InstanceName(qint64 process) {
  return QString::fromUtf8(kInstancePrefix) + QString::number(process);
}

}  // namespace platform_qt
