// Words separated by single blanks in one text that lives elsewhere: "AT BE DE". Any thread.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace fexora {

class WordList {
 public:
  constexpr WordList() noexcept = default;
  constexpr explicit WordList(std::string_view text) noexcept : text_(text) {}

  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::string_view;
    using difference_type = std::ptrdiff_t;
    using pointer = const std::string_view*;
    using reference = std::string_view;

    constexpr Iterator() noexcept = default;
    constexpr explicit Iterator(std::string_view rest) noexcept : rest_(rest) {}
    constexpr std::string_view operator*() const noexcept { return rest_.substr(0, length()); }
    constexpr Iterator& operator++() noexcept {
      const std::size_t used = length();
      rest_.remove_prefix(used < rest_.size() ? used + 1 : used);
      return *this;
    }
    constexpr Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    // Of iterators of one list.
    constexpr bool operator==(const Iterator& other) const noexcept {
      return rest_.size() == other.rest_.size();
    }

   private:
    constexpr std::size_t length() const noexcept {
      const std::size_t end = rest_.find(' ');
      return end != std::string_view::npos ? end : rest_.size();
    }
    std::string_view rest_;
  };

  constexpr Iterator begin() const noexcept { return Iterator(text_); }
  constexpr Iterator end() const noexcept { return Iterator(); }
  constexpr bool empty() const noexcept { return text_.empty(); }
  constexpr std::string_view text() const noexcept { return text_; }

  constexpr bool contains(std::string_view word) const noexcept {
    for (const std::string_view each : *this) {
      if (each == word) return true;
    }
    return false;
  }

 private:
  std::string_view text_;
};

}  // namespace fexora
