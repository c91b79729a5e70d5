// What a record is read from: a dictionary, wherever it is kept.
//
// A parsed text need not become a tree of Values first: for a list of ten thousand rates that tree
// costs several times what the records do. Valid during the reading only; used by one thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API MapSource {
 public:
  // Takes a dictionary, and how many there are to come, this one included.
  using Visitor = std::function<void(const MapSource& dictionary, std::size_t left)>;

  MapSource() = default;
  MapSource(const MapSource&) = delete;
  MapSource& operator=(const MapSource&) = delete;
  virtual ~MapSource();

  // The value under `key`, null when the key is absent; valid as long as `scratch`, which a source
  // that keeps no Values puts it into.
  virtual const Value* find(std::string_view key, Value& scratch) const = 0;
  // Copies the text under `key` into `text`, which stays as it is when there is no text.
  virtual void readText(std::string_view key, std::string& text) const = 0;
  // Shows `visit` the dictionary under `key`, if there is one.
  virtual void visitDictionary(std::string_view key, const Visitor& visit) const = 0;
  // Shows `visit` each element of the list under `key`, in order; false, with none shown, unless
  // there is a list of dictionaries only.
  virtual bool visitDictionaries(std::string_view key, const Visitor& visit) const = 0;
};

// A dictionary of Values, which outlives this.
class FEXORA_API DictionarySource final : public MapSource {
 public:
  explicit DictionarySource(const Dictionary& dictionary) noexcept : dictionary_(dictionary) {}

  const Value* find(std::string_view key, Value& scratch) const override;
  void readText(std::string_view key, std::string& text) const override;
  void visitDictionary(std::string_view key, const Visitor& visit) const override;
  bool visitDictionaries(std::string_view key, const Visitor& visit) const override;

 private:
  const Dictionary& dictionary_;
};

// Shows `visit` each element; false, with none shown, unless `list` is a list of dictionaries only.
FEXORA_API bool visitDictionaries(const Value& list, const MapSource::Visitor& visit);

// How many they are, as visitDictionaries() would show them; nothing unless it is such a list.
FEXORA_API std::optional<std::size_t> countDictionaries(const Value& list) noexcept;

}  // namespace fexora
