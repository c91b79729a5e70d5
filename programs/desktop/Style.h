// How the windows look: colours by the palette, sizes by the desktop's font.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

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

// Gives the whole application the light or the dark one. Nothing where it has it already.
void applyTheme(bool dark);

// A length that is given for a font of ten points, in the application's font.
int sized(double pixels);
// The application's font in such a size.
QFont fontOf(double pixels, QFont::Weight weight = QFont::Normal);

// A list without a frame, with a thin scroll bar.
void styleList(QAbstractItemView& list);
// A one-line field with round corners and room around its text.
void styleEntry(QLineEdit& entry);

}  // namespace fexora::desktop
