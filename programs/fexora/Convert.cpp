// The main job: an amount, or each amount of standard input, converted and shown.
#include <algorithm>
#include <iostream>
#include <string>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Conversion.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"

namespace fexora::program {
namespace {

constexpr const char* kStandardInput = "-";

Exit convertOne(const Request& request, const CommandLine& line, StoreManager& store, bool sync) {
  const Conversion conversion = conversionOf(request, line, store, sync);
  print(conversion, line, store);
  return conversion.missing.empty() ? Exit::done : Exit::noCurrency;
}

// One amount a line, empty lines passed over. What is wrong with one costs the others nothing; the
// exit code is the largest of theirs.
Exit convertLines(const CommandLine& line, StoreManager& store) {
  Exit exit = Exit::done;
  const auto take = [&](Exit of) { exit = std::max(exit, of); };
  for (std::string amount; std::getline(std::cin, amount);) {
    if (amount.ends_with('\r')) amount.pop_back();
    if (amount.empty()) continue;
    try {
      take(convertOne(requestOf(line.operands, amount), line, store, false));
    } catch (const Failure& failure) {
      if (failure.exit == Exit::notWritten) throw;
      printFailure(failure, line.json);
      take(failure.exit);
    }
  }
  if (!line.noSave) store.synchronize();
  return exit;
}

Request wordsRequest(const std::vector<std::string>& operands) {
  try {
    return requestOf(operands, operands[0]);
  } catch (Failure& failure) {
    if (failure.exit == Exit::usage) failure.message += commandMeant(operands[0]);
    throw;
  }
}

}  // namespace

// What cannot be an amount is told before a store is opened, or made.
Exit convert(const CommandLine& line) {
  if (line.operands.empty()) {
    throw usageFailure("expected an amount and a currency, as in: fexora 100 USD EUR");
  }
  const bool isMany = line.operands[0] == kStandardInput;
  const Request request = isMany ? Request() : wordsRequest(line.operands);
  StoreManager& store = openStore(!line.noSave);
  const Exit exit =
      isMany ? convertLines(line, store) : convertOne(request, line, store, !line.noSave);
  if (!line.noSave) requireSaved(store);
  return exit;
}

}  // namespace fexora::program
