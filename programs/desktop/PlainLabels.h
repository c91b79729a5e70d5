// Texts from outside are shown as they are, never as markup.
#pragma once

#include <QApplication>
#include <QString>

namespace fexora::desktop {

// From now on no label of the process takes a text for markup, whoever makes it: a dialog, a form,
// or Qt for a tooltip. It would read the files that an <img> names. Before any widget.
void keepLabelsPlain(QApplication& application);

// `text` in lines short enough for a tooltip, which is as wide as its longest.
QString wrapped(const QString& text);

}  // namespace fexora::desktop
