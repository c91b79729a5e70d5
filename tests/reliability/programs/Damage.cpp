// Lets a store meet damaged files: reliability_damage COUNT [SEED]. Prints what came of them and
// the most memory that the process took; exits with 1 at the first fault, whose file it writes to
// "damage.plist".
#include "tests/reliability/Damage.h"

#include <cstdio>
#include <cstdlib>

#include <sys/resource.h>

#include "tests/support/ScratchFolder.h"

int main(int count, char** words) {
  using namespace fexora::test;
  const std::uint64_t stores = count > 1 ? std::strtoull(words[1], nullptr, 10) : 1'000'000;
  const std::uint64_t seed = count > 2 ? std::strtoull(words[2], nullptr, 10) : 1;
  const std::string xml = realStore(12);
  const std::string binary = inBinary(xml);
  Damager damager(seed);
  DamageJudge judge;
  for (std::uint64_t i = 0; i < stores; ++i) {
    const std::string bytes =
        i % 2 == 0 ? damager.damaged(xml, binary) : damager.damaged(binary, xml);
    judge.meet(bytes);
    if (judge.report().fault.empty()) continue;
    writeFile("damage.plist", bytes);
    std::printf("store %llu: %s\n", static_cast<unsigned long long>(i),
                judge.report().fault.c_str());
    return 1;
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf(
      "%llu damaged stores: %llu still read, %llu refused and kept aside; %ld MiB at most\n",
      static_cast<unsigned long long>(stores), static_cast<unsigned long long>(judge.report().read),
      static_cast<unsigned long long>(judge.report().refused), usage.ru_maxrss / 1024);
  return 0;
}
