#include "programs/desktop/PowerSaver.h"

#include <QDBusConnection>

#include "programs/desktop/Portal.h"

namespace fexora::desktop {

bool savesPower() {
  constexpr int kPatienceMilliseconds = 200;
  if (!hasSessionBus()) return false;
  QDBusMessage call = portalCall("org.freedesktop.DBus.Properties", "Get");
  call << QStringLiteral("org.freedesktop.portal.PowerProfileMonitor")
       << QStringLiteral("power-saver-enabled");
  const QDBusMessage answer =
      QDBusConnection::sessionBus().call(call, QDBus::Block, kPatienceMilliseconds);
  // An error has arguments, too: a text, which is no "no".
  return answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty() &&
         unwrapped(answer.arguments().constFirst()).toBool();
}

}  // namespace fexora::desktop
