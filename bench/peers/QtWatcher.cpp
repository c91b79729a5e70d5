// QFileSystemWatcher on the folder.
#include <QCoreApplication>
#include <QFileSystemWatcher>

#include "bench/watch/Observer.h"

namespace fexora::bench {
namespace {

void makeApplication() {
  static int count = 1;
  static char name[] = "bench";
  static char* words[] = {name, nullptr};
  static const QCoreApplication application(count, words);
}

class QtWatcher final : public LoopObserver {
 public:
  explicit QtWatcher(const std::string& folder) {
    makeApplication();
    watcher_ = std::make_unique<QFileSystemWatcher>();
    watcher_->addPath(QString::fromStdString(folder));
    QObject::connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, [this] { told(); });
  }

 private:
  std::unique_ptr<QFileSystemWatcher> watcher_;
};

const EnterWatch<QtWatcher> entered("QFileSystemWatcher, without the read");

}  // namespace
}  // namespace fexora::bench
