// The desktop portal on the session bus.
#pragma once

#include <QDBusMessage>
#include <QString>
#include <QVariant>

namespace fexora::desktop {

inline constexpr const char* kPortalService = "org.freedesktop.portal.Desktop";
inline constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";

// A call to the portal, whose arguments are still to be set.
QDBusMessage portalCall(const char* interface, const char* method);

// Whether there is a session bus. Starts none.
bool hasSessionBus();

// The value in as many variants as the portal has put around it.
QVariant unwrapped(QVariant value);

}  // namespace fexora::desktop
