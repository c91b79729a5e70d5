#include "programs/desktop/FirstPaint.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace fexora::desktop {
namespace {

class FirstPaint final : public QObject {
 public:
  FirstPaint(QWidget& window, std::function<void()> run) : QObject(&window), run_(std::move(run)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    watched->removeEventFilter(this);
    // The children are painted after it.
    const auto runOnce = [this] {
      run_();
      deleteLater();
    };
    QMetaObject::invokeMethod(this, runOnce, Qt::QueuedConnection);
    return false;
  }

 private:
  std::function<void()> run_;
};

}  // namespace

void onceItIsPainted(QWidget& window, std::function<void()> run) {
  new FirstPaint(window, std::move(run));
}

}  // namespace fexora::desktop
