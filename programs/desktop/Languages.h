// The language of the windows: the one in which the library names currencies.
#pragma once

#include <QLocale>

namespace fexora::desktop {

// Dates and plurals of that language.
QLocale languageLocale();

// Installs the texts of that language, or English ones, and its direction. Again after a change.
void applyLanguage();

}  // namespace fexora::desktop
