// One process per program and session: a second start hands its words to the first and ends.
//
// By the session bus, as org.freedesktop.Application under the program's id, so that the bus can
// start it, too; without a bus every start is a process of its own.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace fexora::desktop {

class SingleInstance final : public QObject {
  Q_OBJECT

 public:
  // `id` like "org.fexora.Fexora".
  explicit SingleInstance(QString id, QObject* parent = nullptr);

  // True when another process has the id: it has been given the words, and this one should end.
  // Else this process has it from now on, where there is a bus.
  bool handOver(const QStringList& words);

 signals:
  // Another start; its words, or none.
  void activated(const QStringList& words);
  // One of the actions of the program's desktop entry, by its name there.
  void actionWanted(const QString& name);

 private:
  bool activateOther(const QStringList& words);
  QString path() const;

  QString id_;
};

// What the bus reaches; a name is the interface's.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  explicit ApplicationAdaptor(SingleInstance& instance)
      : QDBusAbstractAdaptor(&instance), instance_(instance) {}

 public slots:
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& name, const QVariantList& words,
                      const QVariantMap& platformData);

 private:
  SingleInstance& instance_;
};

}  // namespace fexora::desktop
