#include "programs/desktop/Style.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontInfo>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleFactory>
#include <algorithm>

namespace fexora::desktop {
namespace {

// Of ten points at 96 dots an inch.
constexpr double kUsualFont = 13.33;

const Theme kLight = {.window = 0xFAFAFA,
                      .field = 0xFFFFFF,
                      .text = 0x1C1E21,
                      .dim = 0x5F6672,
                      .hairline = 0xE5E7EB,
                      .accent = 0x1A66D6,
                      .row = 0xFFFFFF,
                      .selected = 0xF1F5FB,
                      .button = 0xF1F3F7,
                      .good = 0x2F9E58,
                      .warning = 0xB45309};
const Theme kDark = {.window = 0x1F2124,
                     .field = 0x27292D,
                     .text = 0xF1F2F4,
                     .dim = 0x9AA1AC,
                     .hairline = 0x35383D,
                     .accent = 0x78AEFF,
                     .row = 0x27292D,
                     .selected = 0x2F333A,
                     .button = 0x33373E,
                     .good = 0x2F9E58,
                     .warning = 0xF2B155};

QPalette paletteOf(const Theme& theme) {
  QPalette palette(theme.text, theme.button, theme.button.lighter(), theme.hairline.darker(110),
                   theme.hairline, theme.text, theme.text, theme.field, theme.window);
  palette.setColor(QPalette::Highlight, theme.accent);
  palette.setColor(QPalette::HighlightedText, theme.window);
  palette.setColor(QPalette::PlaceholderText, theme.dim);
  palette.setColor(QPalette::Link, theme.accent);
  palette.setColor(QPalette::ToolTipBase, theme.field);
  palette.setColor(QPalette::ToolTipText, theme.text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, theme.dim);
  }
  return palette;
}

double basePixels() {
  return std::max(1, QFontInfo(QApplication::font()).pixelSize());
}

}  // namespace

const Theme& themeOf(const QPalette& palette) {
  constexpr int kMiddle = 128;
  return palette.color(QPalette::Window).lightness() < kMiddle ? kDark : kLight;
}

void applyTheme(bool dark) {
  const Theme& theme = dark ? kDark : kLight;
  if (QApplication::palette().color(QPalette::Window) == theme.window) return;
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QApplication::setPalette(paletteOf(theme));
}

int sized(double pixels) {
  return qRound(pixels * basePixels() / kUsualFont);
}

QFont fontOf(double pixels, QFont::Weight weight) {
  QFont font = QApplication::font();
  font.setPixelSize(std::max(1, sized(pixels)));
  font.setWeight(weight);
  return font;
}

void styleList(QAbstractItemView& list) {
  list.setFrameShape(QFrame::NoFrame);
  list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list.verticalScrollBar()->setStyleSheet(
      QStringLiteral("QScrollBar { background: palette(base); width: %1px; margin: 0; }"
                     "QScrollBar::handle { background: palette(dark); border-radius: %2px;"
                     " min-height: %3px; margin: 2px; }"
                     "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                     "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
          .arg(sized(10))
          .arg(sized(3))
          .arg(sized(30)));
}

void styleEntry(QLineEdit& entry) {
  entry.setStyleSheet(
      QStringLiteral("QLineEdit { background: palette(base); border: 1px solid palette(dark);"
                     " border-radius: %1px; padding: 0 %2px; }"
                     "QLineEdit:focus { border-color: palette(highlight); }")
          .arg(sized(8))
          .arg(sized(10)));
}

}  // namespace fexora::desktop
