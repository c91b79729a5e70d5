#include "programs/desktop/Autostart.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

#include "programs/desktop/Companion.h"

namespace fexora::desktop {
namespace {

QString folder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/autostart");
}

QString entryPath() {
  return folder() + QStringLiteral("/org.fexora.Today.desktop");
}

// In the entry's own quoting, which takes a backslash before these.
QString quoted(QString path) {
  for (const char* const sign : {"\\", "\"", "`", "$"}) {
    path.replace(QLatin1String(sign), QLatin1String("\\\\") + QLatin1String(sign));
  }
  return '"' + path.replace('%', QStringLiteral("%%")) + '"';
}

}  // namespace

bool startsTodayAtLogin() {
  return QFile::exists(entryPath());
}

bool setStartsTodayAtLogin(bool starts) {
  if (!starts) return !startsTodayAtLogin() || QFile::remove(entryPath());
  QSaveFile file(entryPath());
  if (!QDir().mkpath(folder()) || !file.open(QIODevice::WriteOnly)) return false;
  file.write(QStringLiteral("[Desktop Entry]\nType=Application\nName=Fexora Today\nExec=%1\n"
                            "Icon=org.fexora.Fexora\n")
                 .arg(quoted(companionPath(Companion::today)))
                 .toUtf8());
  return file.commit();
}

}  // namespace fexora::desktop
