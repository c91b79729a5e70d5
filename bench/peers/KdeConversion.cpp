// KUnitConversion, whose currencies are the European Central Bank's list. Its rates file is written
// by hand and fresh, so that it asks nobody.
#include <filesystem>
#include <fstream>

#include <KUnitConversion/Converter>
#include <KUnitConversion/UnitCategory>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

using KUnitConversion::Converter;
using KUnitConversion::Unit;
using KUnitConversion::Value;

constexpr std::size_t kCatalogue = 339;

// A converter that has the world's rates for its own currencies, one to one made up.
std::shared_ptr<Converter> converter(const World& world) {
  const std::string folder = world.folder + "/libkunitconversion";
  std::filesystem::create_directories(folder);
  std::ofstream file(folder + "/currency.xml");
  file << "<?xml version=\"1.0\"?><Envelope><Cube><Cube time=\"2026-09-29\">";
  auto made = std::make_shared<Converter>();
  std::size_t next = 1;
  for (const Unit& unit : made->category(KUnitConversion::CurrencyCategory).units()) {
    if (unit.symbol() == "EUR") continue;
    file << "<Cube currency=\"" << unit.symbol().toStdString() << "\" rate=\""
         << world.values[next++] << "\"/>";
  }
  file << "</Cube></Cube></Envelope>";
  qputenv("XDG_DATA_HOME", QByteArray::fromStdString(world.folder));
  return made;
}

const Peers<PairJob> pair([](Race& race, const PairJob& job) {
  if (job.world.codes.size() != kCatalogue) return;
  race.add("KUnitConversion", [made = converter(job.world)] {
    return made->convert(Value(1, QStringLiteral("USD")), QStringLiteral("GBP")).number();
  });
});

const Peers<ConversionJob> all([](Race& race, const ConversionJob& job) {
  if (job.world.codes.size() != kCatalogue) return;
  const auto made = converter(job.world);
  const QList<Unit> units = made->category(KUnitConversion::CurrencyCategory).units();
  race.add("KUnitConversion, its " + std::to_string(units.size()) + " currencies", [made, units] {
    double sum = 0;
    const Value amount(3.5, QStringLiteral("EUR"));
    for (const Unit& unit : units) sum += made->convert(amount, unit).number();
    return sum;
  });
});

}  // namespace
}  // namespace fexora::bench
