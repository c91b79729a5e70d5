#include "programs/desktop/Style.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontInfo>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleFactory>
#include <algorithm>
#include <cmath>

namespace fexora::desktop {
namespace {

// Of ten points at 96 dots an inch.
constexpr double kUsualFont = 13.33;

struct Themes {
  Theme light = {.window = 0xFAFAFA,
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
  Theme dark = {.window = 0x1F2124,
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
};

Themes& themes() {
  static Themes both;
  return both;
}

constexpr double kReadable = 4.5;  // for text of a usual size, by the same guidelines

// Of the same hue.
QColor readableOn(const QColor& ground, QColor colour) {
  const bool groundIsDark = contrastOf(ground, Qt::black) < contrastOf(ground, Qt::white);
  const float step = groundIsDark ? 0.02F : -0.02F;
  for (float light = colour.lightnessF(); contrastOf(colour, ground) < kReadable; light += step) {
    if (light < 0 || light > 1) break;
    colour.setHslF(std::max(0.0F, colour.hslHueF()), colour.hslSaturationF(), light);
  }
  return colour;
}

// Relative luminance, from 0 to 1.
double luminanceOf(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

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

double contrastOf(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminanceOf(one), luminanceOf(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

const Theme& themeOf(const QPalette& palette) {
  constexpr int kMiddle = 128;
  return palette.color(QPalette::Window).lightness() < kMiddle ? themes().dark : themes().light;
}

void applyTheme(bool dark, const std::optional<QColor>& accent) {
  static const Themes usual;
  Theme& theme = dark ? themes().dark : themes().light;
  theme.accent =
      accent ? readableOn(theme.window, *accent) : (dark ? usual.dark : usual.light).accent;
  const QPalette now = QApplication::palette();
  if (now.color(QPalette::Window) == theme.window &&
      now.color(QPalette::Highlight) == theme.accent) {
    return;
  }
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
