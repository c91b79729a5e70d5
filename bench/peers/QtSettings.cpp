// QSettings in its INI format: the desktop's usual place for settings, beside which the rates
// stand.
#include <QSettings>
#include <chrono>
#include <filesystem>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

QString fileOf(const World& world, const char* use) {
  return QString::fromStdString(world.folder + "/qsettings-" + use + ".ini");
}

void fill(QSettings& settings, const World& world) {
  settings.beginGroup("rates");
  for (std::size_t i = 0; i < world.codes.size(); ++i) {
    settings.setValue(QString::fromStdString(world.codes[i]), world.values[i]);
  }
  settings.endGroup();
  settings.sync();
}

double sumOf(QSettings& settings) {
  double sum = 0;
  for (const QString& key : settings.allKeys()) sum += settings.value(key).toDouble();
  return sum;
}

const Peers<SaveJob> saves([](Race& race, const SaveJob& job) {
  const auto settings =
      std::make_shared<QSettings>(fileOf(job.world, "save"), QSettings::IniFormat);
  fill(*settings, job.world);
  race.add("QSettings (no flush of the folder)", [settings, fraction = 3]() mutable {
    settings->setValue("fraction", fraction = fraction == 3 ? 4 : 3);
    settings->sync();
    return 1.0;
  });
});

const Peers<ReadJob> reads([](Race& race, const ReadJob& job) {
  const QString path = fileOf(job.world, "read");
  {
    QSettings settings(path, QSettings::IniFormat);
    fill(settings, job.world);
  }
  race.add("QSettings", [path, turn = 0]() mutable {
    // Qt keeps the content of files that it had open lately, as long as their time is the same.
    const std::filesystem::file_time_type changed{std::chrono::hours(++turn)};
    std::filesystem::last_write_time(path.toStdString(), changed);
    QSettings settings(path, QSettings::IniFormat);
    return sumOf(settings);
  });
});

}  // namespace
}  // namespace fexora::bench
