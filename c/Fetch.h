// Rates from wherever they are published, brought on the thread that asks.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fexora/records/Response.h"
#include "fexora/store/KeptRates.h"

#include "c/Outcome.h"
#include "c/Session.h"

namespace fexora::c {

// The tables in a text of any form in which rates are published; FEXORA_REFUSED. `name` is what
// messages call it.
Outcome readTables(const std::string& name, std::string text, std::vector<RatesTable>& tables);

// What was fetched: the service's own answer, or tables.
struct Fetched {
  std::shared_ptr<Response> answer;
  std::vector<RatesTable> tables;
};

// The rates of a file or an address (null: of the service), within the turn. Runs a loop and a
// transport of its own, so that what the session does meanwhile has nothing to do with it.
Outcome fetchRates(fexora_session& session, const fexora_session::Turn& turn, const char* from,
                   double until, Fetched& fetched);

}  // namespace fexora::c
