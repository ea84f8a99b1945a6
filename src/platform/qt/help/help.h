// The help book as the program's one window of it.
#pragma once

#include <QUrl>

namespace platform_qt {

// The page that the help window shows; empty when there is no window, or it is put away.
[[nodiscard]] QUrl HelpPage();

}  // namespace platform_qt
