#include "fexora/input/Sentence.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fexora/catalogue/NearCurrencies.h"
#include "fexora/input/Calculation.h"
#include "fexora/input/Reasons.h"
#include "fexora/input/SentenceDay.h"
#include "fexora/input/SentenceWords.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

using Kind = SentenceProblem::Kind;
using Notice = SentenceNotice::Kind;
using By = TypedAmount::CurrencyBy;

constexpr std::string_view kTooLong = "this is too long for a sentence about money";
constexpr std::string_view kNothing = "there is no number and no currency in it";
constexpr std::string_view kUnknown = "this is no currency";
constexpr std::string_view kSecondNumber = "this is a second number";
constexpr std::string_view kNoDay = "this is no day; expected one like 2024-03-01 or 1 March 2024";
constexpr std::string_view kMark = "this cannot stand here";
constexpr std::size_t kOffered = 3;

struct Reader {
  const CurrencyManager& catalogue;
  Text& rules;
  std::string_view locale;
  NumberMarks marks;
};

// One pass over a sentence, with names or without.
class Reading {
 public:
  Reading(const SentenceTokens& tokens, const Reader& reader, const CurrencyNaming* names)
      : tokens_(tokens),
        currencies_(tokens, reader.catalogue, reader.locale, names),
        cursor_(tokens),
        amounts_(cursor_, currencies_, reader.marks, reader.locale, reader.rules),
        calculation_(cursor_, currencies_, amounts_) {}

  Sentence read();

 private:
  struct Place {
    Mention mention;
    bool isAsked;  // a word between stood before it
  };

  void takeAmount();
  void takeSource();
  void takeDestinations();
  void failAtDestination();
  void addDestination(const Mention& mention);
  bool skipBetween();
  void skipLead();
  bool isBetweenWord(std::size_t token) const;
  bool isLead(std::size_t token) const;
  bool onlyLeadFollows() const;
  bool isAccounting(std::size_t begin, std::size_t end, const Mention& money) const;
  void fillAmount(const Quantity& quantity);
  void noteMention(const Mention& mention, bool isSource);
  void note(Notice kind, std::size_t first, std::size_t last, const CurrencyRef& currency,
            double value = 0, double other = 0);
  bool isDoubtful() const;

  const SentenceTokens& tokens_;
  SentenceCurrencies currencies_;
  SentenceCursor cursor_;
  SentenceAmount amounts_;
  Calculation calculation_;
  std::optional<Mention> source_;
  std::vector<Place> destinations_;
  std::size_t amountAt_ = 0;
  Sentence sentence_;
};

Sentence Reading::read() {
  skipLead();
  if (cursor_.atEnd()) {
    cursor_.failHere(Kind::noAmount, kNothing);
  } else if (amounts_.startsAt(cursor_.at()) || !currencies_.at(cursor_.at())) {
    takeAmount();
  } else {
    takeSource();
  }
  if (cursor_.at() > 0) sentence_.amountEnd = tokens_.all()[cursor_.at() - 1].end;
  takeDestinations();
  if (cursor_.failed()) {
    sentence_ = {};
    sentence_.problem = cursor_.problem();
    return std::move(sentence_);
  }
  if (source_) sentence_.source = source_->currency;
  sentence_.isDoubtful = isDoubtful();
  for (const auto& [first, last, value, other] : amounts_.open()) {
    note(Notice::otherReading, first, last, nullptr, value, other);
  }
  if (source_) noteMention(*source_, true);
  for (const Place& place : destinations_) addDestination(place.mention);
  return std::move(sentence_);
}

void Reading::addDestination(const Mention& mention) {
  noteMention(mention, false);
  auto& known = sentence_.destinations;
  const bool isNew = std::none_of(known.begin(), known.end(), [&mention](const CurrencyRef& one) {
    return *one == *mention.currency;
  });
  if (isNew) known.push_back(mention.currency);
}

void Reading::takeAmount() {
  const SentenceToken* const here = cursor_.token();
  // A word that is no currency; what may follow it tells nothing.
  if (here->kind == SentenceToken::Kind::word && !amounts_.startsAt(cursor_.at())) {
    cursor_.failHere(Kind::unknownCurrency, kUnknown);
    return;
  }
  const std::size_t begin = cursor_.at();
  amountAt_ = begin;
  Quantity quantity = calculation_.evaluate();
  if (cursor_.failed()) return;
  if (quantity.money && isAccounting(begin, cursor_.at(), *quantity.money)) {
    quantity.value = -quantity.value;
    quantity.other = -quantity.other;
    note(Notice::accounting, begin, cursor_.at(), quantity.money->currency, quantity.value);
  }
  fillAmount(quantity);
}

// "(5 €)", "$(5)": one number in parentheses, its currency before or beside it, and nothing of a
// calculation.
bool Reading::isAccounting(std::size_t begin, std::size_t end, const Mention& money) const {
  std::u32string marks;  // with a 0 for a number
  std::size_t closing = 0;
  for (std::size_t at = begin; at < end; ++at) {
    const SentenceToken& token = tokens_.all()[at];
    if (token.isMark(U')')) closing = at;
    if (token.kind == SentenceToken::Kind::number) marks += U'0';
    if (token.kind == SentenceToken::Kind::mark) marks += token.sign;
  }
  return marks == U"(0)" && money.first < closing;
}

void Reading::fillAmount(const Quantity& quantity) {
  TypedAmount& amount = sentence_.amount;
  const bool isOpen = !amounts_.open().empty() && quantity.other != quantity.value;
  amount.kind = isOpen ? TypedAmount::Kind::ambiguous : TypedAmount::Kind::exact;
  amount.value = quantity.value;
  if (isOpen) amount.other = quantity.other;
  sentence_.hasAmount = true;
  sentence_.isCalculation = calculation_.hasSteps();
  source_ = quantity.money;
  if (!source_) return;
  amount.currency = source_->currency->code();
  amount.currencyBy = source_->by;
  amount.share = 1 / source_->parts;
}

void Reading::takeSource() {
  source_ = currencies_.at(cursor_.at());
  cursor_.moveTo(source_->last);
  TypedAmount& amount = sentence_.amount;
  amount.kind = TypedAmount::Kind::exact;
  amount.value = 1 / source_->parts;
  amount.currency = source_->currency->code();
  amount.currencyBy = source_->by;
  amount.share = 1 / source_->parts;
}

bool Reading::isBetweenWord(std::size_t token) const {
  const SentenceWord word = tokens_.all()[token].word;
  return word == SentenceWord::between || word == SentenceWord::lead;
}

bool Reading::skipBetween() {
  constexpr std::u32string_view kMarks = U",;&/=>|\u2192\u060C\u3001:-";
  bool isAsked = false;
  while (const SentenceToken* const token = cursor_.token()) {
    const bool isBetween = token->kind == SentenceToken::Kind::mark
                               ? kMarks.find(token->sign) != kMarks.npos
                               : isBetweenWord(cursor_.at());
    if (!isBetween) break;
    isAsked = true;
    cursor_.moveTo(cursor_.at() + 1);
  }
  return isAsked;
}

bool Reading::isLead(std::size_t token) const {
  constexpr std::u32string_view kMarks = U"?.!:\u061F\uFF1F";
  const SentenceToken& here = tokens_.all()[token];
  if (here.kind == SentenceToken::Kind::mark) return kMarks.find(here.sign) != kMarks.npos;
  return here.word == SentenceWord::lead || here.word == SentenceWord::of;
}

void Reading::skipLead() {
  while (!cursor_.atEnd() && tokens_.all()[cursor_.at()].kind == SentenceToken::Kind::word &&
         isLead(cursor_.at())) {
    cursor_.moveTo(cursor_.at() + 1);
  }
}

bool Reading::onlyLeadFollows() const {
  for (std::size_t at = cursor_.at(); at < tokens_.all().size(); ++at) {
    if (!isLead(at)) return false;
  }
  return true;
}

void Reading::failAtDestination() {
  constexpr std::u32string_view kSteps = U"(+-*/^%";
  const SentenceToken& token = *cursor_.token();
  if (token.kind == SentenceToken::Kind::number) {
    cursor_.failHere(Kind::unexpected, kSecondNumber);
  } else if (token.isMark(U')')) {
    cursor_.failHere(Kind::unbalanced, kUnbalanced);
  } else if (token.kind == SentenceToken::Kind::mark && kSteps.find(token.sign) != kSteps.npos) {
    cursor_.failHere(Kind::unexpected, kMark);
  } else {
    cursor_.failHere(Kind::unknownCurrency, kUnknown);
  }
}

void Reading::takeDestinations() {
  while (!cursor_.failed() && !cursor_.atEnd()) {
    const bool isAsked = skipBetween();
    if (onlyLeadFollows()) break;
    const auto mention = currencies_.at(cursor_.at());
    if (!mention) {
      failAtDestination();
      return;
    }
    if (!source_ && !sentence_.hasAmount) return;
    destinations_.push_back({*mention, isAsked});
    cursor_.moveTo(mention->last);
  }
}

void Reading::note(Notice kind, std::size_t first, std::size_t last, const CurrencyRef& currency,
                   double value, double other) {
  sentence_.notices.push_back(
      {kind, std::string(tokens_.textOf(first, last)), currency, value, other});
}

void Reading::noteMention(const Mention& mention, bool isSource) {
  const auto add = [&](Notice kind, double value) {
    note(kind, mention.first, mention.last, mention.currency, value);
  };
  if (mention.by == By::region) add(Notice::region, 0);
  if (mention.by == By::trade) add(Notice::trade, 0);
  const bool isOtherName = mention.by == By::name && mention.kind != NameKind::currency &&
                           mention.kind != NameKind::shared;
  if (isOtherName) add(Notice::name, 0);
  if (mention.parts != 1)
    add(isSource ? Notice::hundredths : Notice::hundredthsResult, mention.parts);
  if (mention.isMetal()) add(Notice::troyOunces, 0);
}

bool Reading::isDoubtful() const {
  if (!source_) return destinations_.empty();
  const bool isBefore = sentence_.hasAmount && source_->first == amountAt_ &&
                        tokens_.all()[source_->first].kind == SentenceToken::Kind::word;
  const bool isCountry = source_->by == By::name && source_->kind == NameKind::country;
  const bool isWeak = source_->isPlain || isCountry;
  if (isWeak && (destinations_.empty() || (isBefore && source_->isPlain))) return true;
  if (!sentence_.hasAmount && isWeak) return true;
  bool areAllPlain = source_->isPlain && !destinations_.empty();
  for (const auto& [mention, isAsked] : destinations_) {
    if (mention.isPlain && !isAsked) return true;
    areAllPlain = areAllPlain && mention.isPlain;
  }
  return areAllPlain;
}

Sentence rejected(Kind kind, std::string_view reason, std::size_t place) {
  Sentence sentence;
  sentence.problem = SentenceProblem{kind, place, 0, reason, {}};
  return sentence;
}

// Whether a code in it may be a name all the same. In English none is.
bool mayHoldNames(const SentenceTokens& tokens, std::string_view locale) {
  if (Locale::hasPlainNumbers(locale)) return false;
  return std::any_of(tokens.all().begin(), tokens.all().end(), [&tokens](const auto& token) {
    const auto at = static_cast<std::size_t>(&token - tokens.all().data());
    return token.kind == SentenceToken::Kind::word && isWrittenAsName(tokens.textOf(at, at + 1));
  });
}

Sentence readTokens(const SentenceTokens& tokens, const Reader& reader) {
  Sentence plain = Reading(tokens, reader, nullptr).read();
  // Only words can be names.
  const bool hasWords =
      std::any_of(tokens.all().begin(), tokens.all().end(),
                  [](const auto& token) { return token.kind == SentenceToken::Kind::word; });
  const bool isDone = !plain.problem && !mayHoldNames(tokens, reader.locale);
  if (isDone || !hasWords) return plain;
  const CurrencyNaming names(reader.catalogue, reader.rules, reader.locale);
  Sentence named = Reading(tokens, reader, &names).read();
  return named.problem && !plain.problem ? plain : named;
}

// Forms of single locales, such as their exponents, that only the reader of amounts knows.
Sentence readAlone(std::string_view text, const Reader& reader, Sentence problem) {
  TypedAmount amount = readAmount(text, reader.locale, reader.rules);
  if (amount.kind == TypedAmount::Kind::refused) return problem;
  Sentence sentence;
  if (!amount.currency.empty()) {
    sentence.source = reader.catalogue.currencyForCode(amount.currency);
    if (sentence.source == nullptr) return problem;
  }
  if (amount.other) {
    sentence.notices.push_back(
        {Notice::otherReading, std::string(text), nullptr, amount.value, *amount.other});
  }
  const bool isChosen = amount.currencyBy == By::region || amount.currencyBy == By::trade;
  if (isChosen) {
    sentence.notices.push_back({amount.currencyBy == By::region ? Notice::region : Notice::trade,
                                std::string(text), sentence.source, 0, 0});
  }
  sentence.isDoubtful = amount.currency.empty();
  sentence.amountEnd = text.size();
  sentence.hasAmount = true;
  sentence.amount = std::move(amount);
  return sentence;
}

std::string_view withoutDay(std::string_view text, const SentenceDay& day) {
  return text.substr(day.begin, day.end - day.begin);
}

// The day that the text names, where what is left names no other: each day in a row would be tried
// with and without all that follow.
std::optional<SentenceDay> onlyDay(std::string_view text) {
  const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  const auto day = sentenceDay(text, today);
  return day && !sentenceDay(withoutDay(text, *day), today) ? day : std::nullopt;
}

// The same without its day.
Sentence readDated(std::string_view text, const SentenceDay& day, const SentenceOptions& options) {
  Sentence sentence = readSentence(withoutDay(text, day), options);
  if (sentence.problem) sentence.problem->place += day.begin;
  sentence.amountEnd += day.begin;
  sentence.day = day.day;
  return sentence;
}

}  // namespace

Sentence readSentence(std::string_view text, const SentenceOptions& options) {
  if (text.size() > limits::kSentenceBytes) {
    return rejected(Kind::tooLong, kTooLong, limits::kSentenceBytes);
  }
  // "2024-03-01 usd eur" would be a subtraction, too; all other days are looked for where there is
  // no other reading.
  const bool mayBeIso = text.find('-') != std::string_view::npos;
  auto day = mayBeIso ? onlyDay(text) : std::nullopt;
  std::optional<Sentence> dated;
  if (day && day->isIso) {
    dated = readDated(text, *day, options);
    if (!dated->problem) return *std::move(dated);
  }
  Text& rules = options.rules != nullptr ? *options.rules : Text::process();
  const CurrencyManager& catalogue =
      options.catalogue != nullptr ? *options.catalogue : currencyManager();
  const Reader reader{catalogue, rules, options.locale, rules.numberMarks(options.locale)};
  const SentenceTokens tokens(text, reader.marks);
  if (tokens.broken()) return rejected(Kind::notText, kBroken, *tokens.broken());
  Sentence sentence = readTokens(tokens, reader);
  if (!sentence.problem) return sentence;
  if (!mayBeIso) day = onlyDay(text);
  if (day && !day->isIso) dated = readDated(text, *day, options);
  // After a day at the front it is wrong at its own place, and not in the day's figures.
  if (dated && (!dated->problem || day->begin > 0)) return *std::move(dated);
  sentence = readAlone(text, reader, std::move(sentence));
  if (!sentence.problem || sentence.problem->kind != Kind::unknownCurrency) return sentence;
  SentenceProblem& problem = *sentence.problem;
  if (problem.place > 0 && opensDay(text.substr(problem.place, problem.length))) {
    problem = {Kind::unknownDay, problem.place, text.size() - problem.place, kNoDay, {}};
  } else if (options.offers) {
    problem.near = nearCurrencies(catalogue, text.substr(problem.place, problem.length), kOffered);
  }
  return sentence;
}

bool isBlankText(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) return false;
    const auto form = typedForm(codePoint(text));
    if (form && *form != U' ' && (*form < U'\t' || *form > U'\r')) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace fexora
