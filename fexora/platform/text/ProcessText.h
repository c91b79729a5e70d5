// The process's Text: ASCII and plain numbers by itself, everything else through the text module.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>

#include "fexora/platform/text/Text.h"

namespace fexora {

class ProcessText final : public Text {
 public:
  // `open` is called at most once, at the first text that needs the module; null: there is none,
  // and ASCII rules go for everything.
  explicit ProcessText(std::function<Text*()> open);

  std::string lowercased(std::string_view text) override;
  std::string folded(std::string_view text) override;
  std::string canonical(std::string_view text) override;
  std::size_t characterCount(std::string_view text) override;
  std::vector<std::size_t> characterEnds(std::string_view text) override;
  bool contains(std::string_view whole, std::string_view part) override;
  std::string decimalSeparator(std::string_view locale) override;
  NumberMarks numberMarks(std::string_view locale) override;
  std::optional<double> parseNumber(std::string_view text, std::string_view locale,
                                    std::optional<int> maximumFractionDigits) override;
  std::string formatNumber(double value, std::string_view locale,
                           const NumberStyle& style) override;
  std::optional<std::string> currencyName(std::string_view code, std::string_view locale) override;
  std::vector<std::string> currencyPlurals(std::string_view code, std::string_view locale) override;
  std::vector<NumberWord> numberWords(std::string_view locale) override;
  std::vector<std::string> regionNames(std::string_view region, std::string_view locale) override;
  std::vector<std::string> locales() override;

 private:
  Text* module();

  std::once_flag opened_;
  std::atomic<bool> isOpened_ = false;
  std::function<Text*()> open_;
  Text* module_ = nullptr;
};

}  // namespace fexora
