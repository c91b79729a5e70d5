#include "fexora/platform/mapping/MapSource.h"

#include <algorithm>

namespace fexora {

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

bool visitDictionaries(const Value& list, const MapSource::Visitor& visit) {
  const Array* elements = list.array();
  if (elements == nullptr) return false;
  const auto isDictionary = [](const Value& value) { return value.dictionary() != nullptr; };
  if (!std::all_of(elements->begin(), elements->end(), isDictionary)) return false;
  std::size_t left = elements->size();
  for (const Value& element : *elements) {
    visit(DictionarySource(*element.dictionary()), left--);
  }
  return true;
}

}  // namespace fexora
