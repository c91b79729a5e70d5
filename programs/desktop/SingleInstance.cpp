#include "programs/desktop/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <utility>

#include "programs/desktop/Portal.h"

namespace fexora::desktop {
namespace {

constexpr const char* kApplicationInterface = "org.freedesktop.Application";

QString wordsAction() {
  return QStringLiteral("convert");
}

}  // namespace

SingleInstance::SingleInstance(QString id, QObject* parent) : QObject(parent), id_(std::move(id)) {
  new ApplicationAdaptor(*this);
}

bool SingleInstance::handOver(const QStringList& words) {
  if (!hasSessionBus()) return false;
  auto bus = QDBusConnection::sessionBus();
  bus.registerObject(path(), this);
  if (bus.registerService(id_)) return false;
  return activateOther(words);
}

bool SingleInstance::activateOther(const QStringList& words) {
  constexpr int kPatienceMilliseconds = 2000;
  QDBusMessage call = QDBusMessage::createMethodCall(
      id_, path(), kApplicationInterface,
      words.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("ActivateAction"));
  if (!words.isEmpty()) {
    QVariantList list;
    for (const QString& word : words) list << word;
    call << wordsAction() << list;
  }
  call << QVariantMap();
  const auto answer = QDBusConnection::sessionBus().call(call, QDBus::Block, kPatienceMilliseconds);
  // One that does not answer keeps nobody from a window.
  return answer.type() == QDBusMessage::ReplyMessage;
}

QString SingleInstance::path() const {
  return '/' + QString(id_).replace('.', '/');
}

void ApplicationAdaptor::Activate(const QVariantMap& /*platformData*/) {
  emit instance_.activated({});
}

void ApplicationAdaptor::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
  emit instance_.activated({});
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList& words,
                                        const QVariantMap& /*platformData*/) {
  if (name != wordsAction()) {
    emit instance_.actionWanted(name);
    return;
  }
  QStringList texts;
  for (const QVariant& word : words) texts << unwrapped(word).toString();
  emit instance_.activated(texts);
}

}  // namespace fexora::desktop
