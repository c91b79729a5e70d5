// QStringList::filter: what a completer's model does without an index.
#include <QStringList>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

const Peers<SearchJob> filter([](Race& race, const SearchJob& job) {
  QStringList names;
  for (const std::string& name : job.names) names << QString::fromStdString(name);
  race.add("QStringList::filter (finds all)", [names, &job, next = std::size_t{0}]() mutable {
    const std::string& query = job.queries[next++ % job.queries.size()];
    return static_cast<double>(
        names.filter(QString::fromStdString(query), Qt::CaseInsensitive).size());
  });
});

}  // namespace
}  // namespace fexora::bench
