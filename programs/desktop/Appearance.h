// Light or dark, and the accent: `mode` dark forces dark, light follows the desktop; the accent is
// the desktop's, where it tells it.
#pragma once

#include <QColor>
#include <QDBusMessage>
#include <QObject>
#include <QVariant>
#include <optional>

#include "programs/desktop/Desk.h"

namespace fexora::desktop {

// Applies what holds to the application, now and whenever the store or the desktop changes. Asks
// the desktop portal; without one the desktop is light and has no accent. Main thread.
class Appearance final : public QObject {
  Q_OBJECT

 public:
  explicit Appearance(const Desk& desk, QObject* parent = nullptr);

  // Call after the store's `mode` has changed.
  void apply();

 private slots:
  void settingChanged(const QDBusMessage& message);

 private:
  void askPortal(const char* key);
  void take(const QString& key, const QVariant& value);

  Desk desk_;
  bool desktopIsDark_ = false;
  std::optional<QColor> accent_;
};

}  // namespace fexora::desktop
