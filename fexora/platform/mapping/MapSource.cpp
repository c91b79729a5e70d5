#include "fexora/platform/mapping/MapSource.h"

#include <algorithm>

#include "fexora/platform/plist/LaidOutRecords.h"

namespace fexora {
namespace {

// A record of a list that was left in a file's bytes.
class RecordSource final : public MapSource {
 public:
  explicit RecordSource(const LaidOutRecords::Record& record) noexcept : record_(record) {}

  const Value* find(std::string_view key, Value& scratch) const override {
    const auto* field = record_.find(key);
    if (field == nullptr) return nullptr;
    scratch = field->value();
    return &scratch;
  }
  void readText(std::string_view key, std::string& text) const override {
    const auto* field = record_.find(key);
    if (field != nullptr && field->form == LaidOutRecords::Form::string) text = field->text;
  }
  void visitDictionary(std::string_view /*key*/, const Visitor& /*visit*/) const override {}
  bool visitDictionaries(std::string_view /*key*/, const Visitor& /*visit*/) const override {
    return false;
  }

 private:
  const LaidOutRecords::Record& record_;
};

// Null when the list's elements are Values.
const LaidOutRecords* recordsIn(const Value& list) noexcept {
  return dynamic_cast<const LaidOutRecords*>(list.deferred());
}

}  // namespace

MapSource::~MapSource() = default;

const Value* DictionarySource::find(std::string_view key, Value& /*scratch*/) const {
  return dictionary_.find(key);
}

void DictionarySource::readText(std::string_view key, std::string& text) const {
  const Value* value = dictionary_.find(key);
  if (value != nullptr && value->string() != nullptr) text = *value->string();
}

void DictionarySource::visitDictionary(std::string_view key, const Visitor& visit) const {
  const Value* value = dictionary_.find(key);
  if (value == nullptr || value->dictionary() == nullptr) return;
  visit(DictionarySource(*value->dictionary()), 1);
}

bool DictionarySource::visitDictionaries(std::string_view key, const Visitor& visit) const {
  const Value* value = dictionary_.find(key);
  return value != nullptr && fexora::visitDictionaries(*value, visit);
}

std::optional<std::size_t> countDictionaries(const Value& list) noexcept {
  if (const LaidOutRecords* records = recordsIn(list)) return records->size();
  const Array* elements = list.array();
  const auto isDictionary = [](const Value& value) { return value.dictionary() != nullptr; };
  if (elements == nullptr || !std::all_of(elements->begin(), elements->end(), isDictionary)) {
    return std::nullopt;
  }
  return elements->size();
}

bool visitDictionaries(const Value& list, const MapSource::Visitor& visit) {
  std::optional<std::size_t> left = countDictionaries(list);
  if (!left) return false;
  if (const LaidOutRecords* records = recordsIn(list)) {
    records->visit([&](const auto& record) { visit(RecordSource(record), (*left)--); });
    return true;
  }
  for (const Value& element : *list.array()) {
    visit(DictionarySource(*element.dictionary()), (*left)--);
  }
  return true;
}

}  // namespace fexora
