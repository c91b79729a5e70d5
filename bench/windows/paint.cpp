// bench_paint: the picture of how a rate moved, painted as the converter paints it, against an
// image of its size that is filled. Wants no display.
#include <QApplication>
#include <QImage>
#include <cmath>
#include <random>

#include "bench/support/Race.h"
#include "programs/desktop/RatePlot.h"
#include "programs/desktop/Style.h"

namespace fexora::bench {
namespace {

// A random walk on so many working days.
std::vector<DayRate> rates(std::size_t count) {
  std::mt19937_64 chance(27);
  std::normal_distribution<double> step(0, 0.005);
  std::vector<DayRate> all;
  double rate = 1;
  for (Day day = std::chrono::year(1999) / 1 / 4; all.size() < count; day += std::chrono::days(1)) {
    const unsigned weekday = std::chrono::weekday(day).c_encoding();
    if (weekday == 0 || weekday == 6) continue;
    rate *= std::exp(step(chance));
    all.push_back({day, rate, "ecb"});
  }
  return all;
}

void paint(double scale) {
  const QSize size(364, 170);
  QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  Race race(scale > 1 ? "a plot painted, twice the size" : "a plot painted");
  race.add("an image of its size filled", [&] {
    image.fill(Qt::white);
    return static_cast<double>(image.pixel(1, 1));
  });
  for (const std::size_t days : {22U, 260U, 7143U}) {
    auto* const plot = new desktop::RatePlot(desktop::Desk::process());
    plot->resize(size);
    plot->setRates(rates(days), QStringLiteral("EUR"));
    race.add("of " + std::to_string(days) + " days", [&image, plot] {
      plot->render(&image);
      return static_cast<double>(image.pixel(1, 1));
    });
  }
  race.run();
}

}  // namespace
}  // namespace fexora::bench

int main(int count, char** words) {
  QApplication application(count, words);
  fexora::desktop::applyTheme(false);
  fexora::bench::paint(1);
  fexora::bench::paint(2);
  return 0;
}
