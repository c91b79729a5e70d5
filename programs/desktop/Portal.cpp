#include "programs/desktop/Portal.h"

#include <QDBusConnection>
#include <QDBusVariant>

namespace fexora::desktop {

QDBusMessage portalCall(const char* interface, const char* method) {
  return QDBusMessage::createMethodCall(kPortalService, kPortalPath, interface, method);
}

bool hasSessionBus() {
  // Without this Qt would have libdbus start a bus of its own.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return false;
  return QDBusConnection::sessionBus().isConnected();
}

QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace fexora::desktop
