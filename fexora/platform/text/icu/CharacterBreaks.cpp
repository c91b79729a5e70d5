#include "fexora/platform/text/icu/CharacterBreaks.h"

#include <cstdint>
#include <memory>

#include <unicode/locid.h>

namespace fexora {
namespace {

// Null where ICU has no data for it.
icu::BreakIterator* makeIterator() {
  UErrorCode error = U_ZERO_ERROR;
  return icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error);
}

icu::BreakIterator* threadIterator() {
  thread_local const std::unique_ptr<icu::BreakIterator> iterator(makeIterator());
  // The analyzer takes the thread's variable for one of this call.
  return iterator.get();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

}  // namespace

CharacterBreaks::CharacterBreaks(std::string_view text)
    : iterator_(threadIterator()), size_(text.size()) {
  UErrorCode error = U_ZERO_ERROR;
  utext_openUTF8(&text_, text.empty() ? "" : text.data(), static_cast<std::int64_t>(size_), &error);
  if (iterator_ != nullptr) iterator_->setText(&text_, error);
  if (U_FAILURE(error) != 0) iterator_ = nullptr;
}

CharacterBreaks::~CharacterBreaks() {
  utext_close(&text_);
}

std::optional<std::size_t> CharacterBreaks::next() {
  if (position_ >= size_) return std::nullopt;
  const std::int32_t end =
      iterator_ != nullptr ? iterator_->next() : static_cast<std::int32_t>(size_);
  if (end == icu::BreakIterator::DONE) return std::nullopt;
  position_ = static_cast<std::size_t>(end);
  return position_;
}

bool CharacterBreaks::isBreak(std::size_t at) const {
  if (at == 0 || at == size_) return true;
  return iterator_ != nullptr && iterator_->isBoundary(static_cast<std::int32_t>(at)) != 0;
}

}  // namespace fexora
