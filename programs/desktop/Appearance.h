// Light or dark: `mode` dark forces dark, light follows the desktop.
#pragma once

#include <QDBusVariant>
#include <QObject>

#include "programs/desktop/Desk.h"

namespace fexora::desktop {

// Applies what holds to the application, now and whenever the store or the desktop changes. Asks
// the desktop portal; without one the desktop is light. Main thread.
class Appearance final : public QObject {
  Q_OBJECT

 public:
  explicit Appearance(const Desk& desk, QObject* parent = nullptr);

  // Call after the store's `mode` has changed.
  void apply();

 private slots:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void askPortal();

  Desk desk_;
  bool desktopIsDark_ = false;
};

}  // namespace fexora::desktop
