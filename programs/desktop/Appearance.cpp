#include "programs/desktop/Appearance.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "programs/desktop/Portal.h"
#include "programs/desktop/Style.h"

namespace fexora::desktop {
namespace {

constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kGroup = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";
constexpr unsigned kPrefersDark = 1;

}  // namespace

Appearance::Appearance(const Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
  apply();
  if (hasSessionBus()) askPortal();
}

void Appearance::apply() {
  applyTheme(desk_.store.mode() == StyleMode::dark || desktopIsDark_);
}

void Appearance::settingChanged(const QString& group, const QString& key,
                                const QDBusVariant& value) {
  if (group != QLatin1String(kGroup) || key != QLatin1String(kKey)) return;
  desktopIsDark_ = unwrapped(value.variant()).toUInt() == kPrefersDark;
  apply();
}

// Not waited for: a desktop that is slow to answer does not hold the window up.
void Appearance::askPortal() {
  auto bus = QDBusConnection::sessionBus();
  bus.connect(kPortalService, kPortalPath, kInterface, "SettingChanged", this,
              SLOT(settingChanged(QString, QString, QDBusVariant)));
  QDBusMessage call = portalCall(kInterface, "Read");
  call << QString(kGroup) << QString(kKey);
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *watcher;
    if (!reply.isError()) settingChanged(kGroup, kKey, reply.value());
  });
}

}  // namespace fexora::desktop
