#include "programs/sources/Source.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <iostream>

#include <sys/stat.h>

#include "fexora/platform/base/Limits.h"

#include "programs/sources/SourceText.h"

namespace fexora::sources {
namespace {

std::string readAll(std::istream& in, const std::string& name) {
  std::string text(limits::kAnswerBytes + 1, '\0');
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (in.bad()) throw SourceProblem{name + ": it cannot be read"};
  text.resize(static_cast<std::size_t>(in.gcount()));
  if (text.size() > limits::kAnswerBytes) throw SourceProblem{name + ": it is too large"};
  return text;
}

Date modified(const std::string& path, Date today) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return today;
  constexpr double kDay = 86400;
  return Date(std::floor(static_cast<double>(status.st_mtime) / kDay) * kDay);
}

}  // namespace

Source readText(const std::string& name, const std::string& published, Date undated) {
  const bool isMarked = published.starts_with(kByteOrderMark);
  const std::string unmarked = isMarked ? published.substr(kByteOrderMark.size()) : std::string();
  const std::string& text = isMarked ? unmarked : published;
  switch (text[std::min(text.find_first_not_of(" \t\r\n"), text.size())]) {
    case '<':
      return readEuroXml(name, text, undated);
    case '{':
      return readJson(name, text, undated);
    default:
      return readCsv(name, text, undated);
  }
}

Source readSource(const std::string& operand, Date today) {
  if (operand == "-") {
    const std::string name = "standard input";
    return readText(name, readAll(std::cin, name), today);
  }
  std::ifstream in(operand, std::ios::binary);
  if (!in.is_open()) throw SourceProblem{operand + ": " + std::strerror(errno)};
  return readText(operand, readAll(in, operand), modified(operand, today));
}

}  // namespace fexora::sources
