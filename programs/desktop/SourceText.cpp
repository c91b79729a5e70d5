#include "programs/desktop/SourceText.h"

#include <QCoreApplication>

#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

struct SourceWords {
  Q_DECLARE_TR_FUNCTIONS(SourceWords)
};

}  // namespace

QString sourceInWords(const std::string& source) {
  if (source == "ecb") return SourceWords::tr("European Central Bank");
  if (source == "service") return SourceWords::tr("The rates service");
  if (source == "bundled") return SourceWords::tr("bundled");
  // Daily tables are called by their base.
  return SourceWords::tr("Daily tables in %1").arg(lineOf(source).toUpper());
}

}  // namespace fexora::desktop
