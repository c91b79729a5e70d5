#include "programs/desktop/Appearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>

#include "programs/desktop/Portal.h"
#include "programs/desktop/Style.h"

namespace fexora::desktop {
namespace {

constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kGroup = "org.freedesktop.appearance";
constexpr const char* kScheme = "color-scheme";
constexpr const char* kAccent = "accent-color";
constexpr unsigned kPrefersDark = 1;

// Three parts of one each; the portal says with other figures that there is no accent.
std::optional<QColor> colourOf(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return {};
  const auto parts = value.value<QDBusArgument>();
  if (parts.currentSignature() != QLatin1String("(ddd)")) return {};
  double red = 0;
  double green = 0;
  double blue = 0;
  parts.beginStructure();
  parts >> red >> green >> blue;
  parts.endStructure();
  for (const double part : {red, green, blue}) {
    if (!(part >= 0 && part <= 1)) return {};
  }
  return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                          static_cast<float>(blue));
}

}  // namespace

Appearance::Appearance(const Desk& desk, QObject* parent) : QObject(parent), desk_(desk) {
  apply();
  if (!hasSessionBus()) return;
  QDBusConnection::sessionBus().connect(kPortalService, kPortalPath, kInterface, "SettingChanged",
                                        this, SLOT(settingChanged(QDBusMessage)));
  askPortal(kScheme);
  askPortal(kAccent);
}

void Appearance::apply() {
  applyTheme(desk_.store.mode() == StyleMode::dark || desktopIsDark_, accent_);
}

// As a message: Qt finds no slot for a signal whose last part is a variant.
void Appearance::settingChanged(const QDBusMessage& message) {
  const QVariantList parts = message.arguments();
  if (parts.size() != 3 || parts[0].toString() != QLatin1String(kGroup)) return;
  take(parts[1].toString(), parts[2]);
}

void Appearance::take(const QString& key, const QVariant& value) {
  const QVariant plain = unwrapped(value);
  if (key == QLatin1String(kScheme)) desktopIsDark_ = plain.toUInt() == kPrefersDark;
  if (key == QLatin1String(kAccent)) accent_ = colourOf(plain);
  apply();
}

// Not waited for: a desktop that is slow to answer does not hold the window up.
void Appearance::askPortal(const char* key) {
  QDBusMessage call = portalCall(kInterface, "Read");
  call << QString(kGroup) << QString(key);
  auto* const watcher =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, key] {
    watcher->deleteLater();
    const QDBusMessage reply = watcher->reply();
    if (!reply.arguments().isEmpty() && !watcher->isError()) take(key, reply.arguments().first());
  });
}

}  // namespace fexora::desktop
