// The least program that converts with KUnitConversion: kde AMOUNT FROM TO.
#include <cstdio>

#include <KUnitConversion/Converter>

int main(int count, char** words) {
  if (count != 4) return 2;
  const KUnitConversion::Converter converter;
  const KUnitConversion::Value amount(std::atof(words[1]), QString::fromLocal8Bit(words[2]));
  const auto value = converter.convert(amount, QString::fromLocal8Bit(words[3]));
  std::printf("%g\n", value.number());
  return value.isValid() ? 0 : 1;
}
