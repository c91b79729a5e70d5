// ICU's strict decimal format, kept and made for each call.
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

using Format = std::shared_ptr<icu::NumberFormat>;

Format make() {
  UErrorCode error = U_ZERO_ERROR;
  return Format(icu::NumberFormat::createInstance(icu::Locale("en_US"), error));
}

double parse(const icu::NumberFormat& format, const std::string& text) {
  icu::Formattable value;
  UErrorCode error = U_ZERO_ERROR;
  format.parse(icu::UnicodeString::fromUTF8(text), value, error);
  return value.getDouble(error);
}

const Peers<AmountJob> numbers([](Race& race, const AmountJob& job) {
  const auto batch = static_cast<double>(job.texts.size());
  race.add(
      "ICU, kept",
      [&job, format = make()] {
        double sum = 0;
        for (const std::string& text : job.texts) sum += parse(*format, text);
        return sum;
      },
      batch);
  race.add(
      "ICU, made for each call",
      [&job] {
        double sum = 0;
        for (const std::string& text : job.texts) sum += parse(*make(), text);
        return sum;
      },
      batch);
});

}  // namespace
}  // namespace fexora::bench
