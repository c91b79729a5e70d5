// ICU in each call: every name folded and searched when asked, nothing kept.
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

const Peers<SearchJob> search([](Race& race, const SearchJob& job) {
  race.add("ICU in each call", [&job, next = std::size_t{0}]() mutable {
    auto query = icu::UnicodeString::fromUTF8(job.queries[next++ % job.queries.size()]);
    query.toLower(icu::Locale::getRoot());
    std::size_t found = 0;
    for (const std::string& name : job.names) {
      auto lower = icu::UnicodeString::fromUTF8(name);
      if (lower.toLower(icu::Locale::getRoot()).indexOf(query) >= 0) ++found;
      if (found >= job.limit) break;
    }
    return static_cast<double>(found);
  });
});

}  // namespace
}  // namespace fexora::bench
