// Why a request brought no rates, in the person's language.
#pragma once

#include <QString>

#include "fexora/fexora.h"

namespace fexora::desktop {

// What forPeople() says, with its figures and days as the person writes them; one line. Sentences
// of a check of answers that is not the library's own stay as they are.
QString inWords(const ResponseError& error);

}  // namespace fexora::desktop
