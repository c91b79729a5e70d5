// How the windows look: colours by the palette, sizes by the desktop's font.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <optional>

class QAbstractItemView;
class QLineEdit;
class QWidget;

namespace fexora::desktop {

struct Theme {
  QColor window, field, text, dim, hairline, accent, row, selected, button, good, warning;
};

// Of the two themes the one that the palette belongs to: ask at each paint, and a change of mode
// needs nothing more.
const Theme& themeOf(const QPalette& palette);

// Gives the whole application the light or the dark one, with the desktop's accent where there is
// one: made darker or lighter as far as it must be to be read on the window's ground. Nothing where
// it has it already.
void applyTheme(bool dark, const std::optional<QColor>& accent = {});

// How far apart two colours are for whoever reads one on the other, from 1 to 21: the contrast
// ratio of the Web Content Accessibility Guidelines 2.1.
double contrastOf(const QColor& one, const QColor& other);

// A length that is given for a font of ten points, in the application's font.
int sized(double pixels);
// The application's font in such a size.
QFont fontOf(double pixels, QFont::Weight weight = QFont::Normal);

// A list without a frame, with a thin scroll bar.
void styleList(QAbstractItemView& list);
// A one-line field with round corners and room around its text.
void styleEntry(QLineEdit& entry);

}  // namespace fexora::desktop
