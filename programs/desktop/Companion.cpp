#include "programs/desktop/Companion.h"

#include <QCoreApplication>
#include <QProcess>

namespace fexora::desktop {

QString companionPath(Companion which) {
  return QCoreApplication::applicationDirPath() + (which == Companion::converter
                                                       ? QStringLiteral("/fexora-converter")
                                                       : QStringLiteral("/fexora-today"));
}

bool openCompanion(Companion which, const QStringList& words) {
  return QProcess::startDetached(companionPath(which), words);
}

}  // namespace fexora::desktop
