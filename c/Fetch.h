// Rates from wherever they are published, brought on the thread that asks.
#pragma once

#include <string>
#include <vector>

#include "fexora/store/KeptRates.h"

#include "c/Outcome.h"
#include "c/Session.h"

namespace fexora::c {

// The tables in a text of any form in which rates are published; FEXORA_REFUSED. `name` is what
// messages call it.
Outcome readTables(const std::string& name, std::string text, std::vector<RatesTable>& tables);

// See fexora_refresh(). Each request runs on a loop and a transport of its own, so that what the
// session does meanwhile has nothing to do with it.
Outcome refreshRates(fexora_session& session, const char* from, double seconds);

}  // namespace fexora::c
