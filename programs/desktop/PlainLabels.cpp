#include "programs/desktop/PlainLabels.h"

#include <QEvent>
#include <QLabel>
#include <QStringList>

namespace fexora::desktop {
namespace {

class PlainLabels final : public QObject {
 public:
  using QObject::QObject;

 protected:
  // Each widget is polished once, before it is first shown; a tooltip before it has its text.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Polish) return false;
    if (auto* const label = qobject_cast<QLabel*>(watched)) label->setTextFormat(Qt::PlainText);
    return false;
  }
};

}  // namespace

void keepLabelsPlain(QApplication& application) {
  application.installEventFilter(new PlainLabels(&application));
}

QString wrapped(const QString& text) {
  constexpr qsizetype kMost = 80;
  QString all;
  qsizetype length = 0;
  for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
    const bool fits = length == 0 || length + 1 + word.size() <= kMost;
    if (length > 0) all += fits ? ' ' : '\n';
    length = fits && length > 0 ? length + 1 + word.size() : word.size();
    all += word;
  }
  return all;
}

}  // namespace fexora::desktop
