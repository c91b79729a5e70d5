// The main job: an amount, or each amount of standard input, converted and shown.
#include <algorithm>
#include <string>
#include <vector>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Conversion.h"
#include "programs/fexora/InputLines.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"
#include "programs/shared/SentenceText.h"

namespace fexora::program {
namespace {

constexpr const char* kStandardInput = "-";

// `place` begins each message.
Exit convertOne(const Sentence& sentence, const CommandLine& line, StoreManager& store, bool sync,
                const std::string& place) {
  const Conversion conversion = conversionOf(sentence, line, store, sync);
  print(conversion, line, store, place);
  return conversion.missing.empty() ? Exit::done : Exit::noCurrency;
}

// The line stands in the place of the first operand.
Sentence readLine(const std::string& amount, const CommandLine& line) {
  if (amount.size() <= InputLines::kMostBytes) {
    std::vector<std::string> words = line.operands;
    words.front() = amount;
    return readWords(words);
  }
  throw Failure{Exit::usage, "amount",
                "it is longer than " + std::to_string(InputLines::kMostBytes) + " bytes"};
}

Exit convertNumbered(const std::string& amount, const CommandLine& line, StoreManager& store,
                     const std::string& place) {
  try {
    return convertOne(readLine(amount, line), line, store, false, place);
  } catch (Failure& failure) {
    if (failure.exit == Exit::notWritten) throw;
    failure.message.insert(0, place);
    printFailure(failure, line.json);
    return failure.exit;
  }
}

// One amount a line, empty lines passed over. What is wrong with one costs the others nothing; the
// exit code is the largest of theirs.
Exit convertLines(const CommandLine& line, StoreManager& store) {
  Exit exit = Exit::done;
  InputLines lines;
  try {
    while (const auto amount = lines.next()) {
      if (amount->empty()) continue;
      const std::string place = "line " + std::to_string(lines.number()) + ": ";
      exit = std::max(exit, convertNumbered(*amount, line, store, place));
    }
  } catch (const Failure& failure) {
    if (failure.exit == Exit::notWritten) throw;
    // What was read before is done, and kept.
    printFailure(failure, line.json);
    exit = std::max(exit, failure.exit);
  }
  if (!line.noSave) store.synchronize();
  return exit;
}

Sentence readOperands(const std::vector<std::string>& operands) {
  try {
    return readWords(operands);
  } catch (Failure& failure) {
    if (failure.exit == Exit::usage) failure.message += commandMeant(operands[0]);
    throw;
  }
}

}  // namespace

// What cannot be an amount is told before a store is opened, or made.
Exit convert(const CommandLine& line) {
  if (line.operands.empty()) {
    throw usageFailure(
        "usage: fexora AMOUNT SRC [DST…], as in: fexora 100 USD EUR; fexora --help shows the rest");
  }
  const bool isMany = line.operands[0] == kStandardInput;
  const Sentence sentence = isMany ? Sentence() : readOperands(line.operands);
  StoreManager& store = openStore(!line.noSave);
  const Exit exit =
      isMany ? convertLines(line, store) : convertOne(sentence, line, store, !line.noSave, {});
  if (!line.noSave) requireSaved(store);
  return exit;
}

}  // namespace fexora::program
