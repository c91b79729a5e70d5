#include "programs/desktop/PickerDelegate.h"

#include <algorithm>

#include "programs/desktop/PickerModel.h"
#include "programs/desktop/RowPainting.h"

namespace fexora::desktop {
namespace {

constexpr double kCodeColumn = 60;
constexpr double kTickColumn = 26;

}  // namespace

void PickerDelegate::paintRow(RowPainting& row, const QModelIndex& index) const {
  using Side = RowPainting::Side;
  const Theme& theme = row.theme();
  QRect rest = row.inner();
  const int code = row.text(rest, Side::start, index.data(PickerModel::codeRole).toString(),
                            fontOf(14, QFont::DemiBold), theme.text);
  rest = row.without(rest, Side::start, std::max(code + sized(12), sized(kCodeColumn)));
  if (index.data(PickerModel::tickedRole).toBool()) {
    row.text(rest, Side::end, QStringLiteral("✓"), fontOf(14, QFont::DemiBold), theme.accent);
  }
  rest = row.without(rest, Side::end, sized(kTickColumn));
  const int sign = row.text(rest, Side::end, index.data(PickerModel::signRole).toString(),
                            fontOf(14), theme.dim);
  rest = row.without(rest, Side::end, sign + sized(12));
  row.text(rest, Side::start, index.data(PickerModel::nameRole).toString(), fontOf(14), theme.dim);
}

}  // namespace fexora::desktop
