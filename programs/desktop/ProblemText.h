// Why a request brought no rates, in the person's language.
#pragma once

#include <QString>

#include "fexora/fexora.h"

#include "programs/shared/FreshRates.h"

namespace fexora::desktop {

// Each is one line; figures and days are as the person writes them.
//
// What to do about it, as far as that can be told.
QString inWords(const ResponseError& error);
// Without a full stop. A host's own reason stays as it is.
QString inWords(const RatesReason& reason);
// `verdict` is what the check said.
QString inWords(const program::RatesProblem& problem, const AnswerVerdict& verdict);
// Of rates that were taken: what was left out of them or leaped; empty for nothing.
QString remarksOn(const AnswerVerdict& verdict);

}  // namespace fexora::desktop
