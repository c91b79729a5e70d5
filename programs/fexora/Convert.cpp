// The main job: an amount, or each amount of standard input, converted and shown.
#include <algorithm>
#include <string>
#include <vector>

#include "programs/fexora/Commands.h"
#include "programs/fexora/Conversion.h"
#include "programs/fexora/InputLines.h"
#include "programs/fexora/Output.h"
#include "programs/fexora/PastDay.h"
#include "programs/fexora/Store.h"
#include "programs/shared/Failure.h"
#include "programs/shared/SentenceText.h"

namespace fexora::program {
namespace {

constexpr const char* kStandardInput = "-";

// `place` begins each message.
Exit convertOne(const Sentence& sentence, const CommandLine& line, StoreManager& store, bool sync,
                const std::string& place, const std::optional<PastDay>& on) {
  const Conversion conversion = conversionOf(sentence, line, store, sync, on);
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

// The day that the options name, else the one that the sentence does.
std::optional<PastDay> dayOf(const Sentence& sentence, const CommandLine& line,
                             const std::optional<PastDay>& named) {
  if (named || !sentence.day) return named;
  return pastDayOf(line, *sentence.day);
}

// One amount a line, blank ones passed over. What is wrong with one costs the others nothing; the
// exit code is the largest of theirs.
class Lines {
 public:
  // `on` is the day of the lines that name none of their own.
  Lines(const CommandLine& line, StoreManager& store, const std::optional<PastDay>& on)
      : line_(line), store_(store), on_(on) {}

  // Where a signal ends the lines, what was read is kept, and end() ends the program by it.
  Exit convert() {
    Exit exit = Exit::done;
    InputLines lines(endAsked_);
    try {
      while (const auto amount = lines.next()) {
        if (isBlankText(*amount)) continue;
        const std::string place = "line " + std::to_string(lines.number()) + ": ";
        exit = std::max(exit, convertNumbered(*amount, place));
      }
    } catch (const Failure& failure) {
      if (failure.exit == Exit::notWritten) throw;
      // What was read before is done, and kept.
      printFailure(failure, line_.json);
      exit = std::max(exit, failure.exit);
    }
    if (isRecorded_ && !line_.noSave) store_.synchronize();
    return exit;
  }
  void end() { endAsked_.end(); }

 private:
  Exit convertNumbered(const std::string& text, const std::string& place) {
    try {
      const Sentence sentence = readLine(text, line_);
      const auto on = sentence.day ? std::optional(pastDayOf(line_, *sentence.day)) : on_;
      if (!on) isRecorded_ = true;
      return convertOne(sentence, line_, store_, false, place, on);
    } catch (Failure& failure) {
      if (failure.exit == Exit::notWritten) throw;
      failure.message.insert(0, place);
      printFailure(failure, line_.json);
      return failure.exit;
    }
  }

  const CommandLine& line_;
  StoreManager& store_;
  const std::optional<PastDay>& on_;
  bool isRecorded_ = false;
  EndAsked endAsked_;
};

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
  const std::optional<PastDay> named = pastDayOf(line);
  if (named && sentence.day) {
    throw usageFailure("the sentence names a day, and so does an option: give one of them");
  }
  const std::optional<PastDay> on = dayOf(sentence, line, named);
  if (!isMany && !on && (line.atMost || !line.sources.empty())) {
    throw usageFailure("--at-most and --source go with a day, as in: fexora 100 USD EUR --on DAY");
  }
  // An amount of the past is not the last one.
  const bool saves = !line.noSave && !on;
  StoreManager& store = openStore(saves);
  if (!isMany) {
    const Exit exit = convertOne(sentence, line, store, saves, {}, on);
    if (saves) requireSaved(store);
    return exit;
  }
  Lines lines(line, store, on);
  const Exit exit = lines.convert();
  if (saves) requireSaved(store);
  lines.end();
  return exit;
}

}  // namespace fexora::program
