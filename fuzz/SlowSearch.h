// The search again, as plainly as it can be said: every key made afresh, texts compared character
// by character, lists walked. What the product's search is measured by.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/Platform.h"

namespace fexora::test {

class SlowSearch {
 public:
  SlowSearch(const std::vector<CurrencyRef>& currencies, const Platform& platform)
      : currencies_(currencies), text_(*platform.text), strings_(*platform.strings) {}

  std::vector<CurrencyRef> run(std::string_view query, std::int64_t limit,
                               const std::vector<CurrencyRef>& exclude) const {
    const Characters wanted = characters(query);
    std::vector<CurrencyRef> result;
    for (const CurrencyRef& c : currencies_) {
      const bool matches = wanted.size() == 3 && characters(c->code()) == wanted;
      if (matches && !holds(exclude, c)) result.push_back(c);
    }
    auto counter = static_cast<std::int64_t>(result.size());
    for (const CurrencyRef& c : currencies_) {
      const bool matches =
          contains(localizedString(strings_, c->code()), wanted) || contains(c->code(), wanted);
      if (matches && !holds(result, c)) {
        if (!holds(exclude, c)) result.push_back(c);
        ++counter;
      }
      if (counter == limit) break;
    }
    return result;
  }

 private:
  using Characters = std::vector<std::string>;

  // In lower case.
  Characters characters(std::string_view any) const {
    const std::string text = text_.lowercased(any);
    Characters list;
    std::size_t start = 0;
    for (const std::size_t end : text_.characterEnds(text)) {
      list.push_back(text_.canonical(text.substr(start, end - start)));
      start = end;
    }
    return list;
  }

  bool contains(std::string_view whole, const Characters& wanted) const {
    const Characters in = characters(whole);
    return !wanted.empty() &&
           std::search(in.begin(), in.end(), wanted.begin(), wanted.end()) != in.end();
  }

  static bool holds(const std::vector<CurrencyRef>& list, const CurrencyRef& currency) {
    return std::any_of(list.begin(), list.end(), [&](const CurrencyRef& other) {
      return other != nullptr && *other == *currency;
    });
  }

  const std::vector<CurrencyRef>& currencies_;
  Text& text_;
  HostStrings& strings_;
};

}  // namespace fexora::test
