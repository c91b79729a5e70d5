#include "programs/sources/PastTables.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <utility>

#include "fexora/platform/base/Limits.h"

#include "programs/sources/Source.h"
#include "programs/sources/SourceText.h"

namespace fexora::sources {
namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10;

// A text or a stream, piece by piece, within the bounds of an answer.
class Pieces {
 public:
  Pieces(const std::string& name, std::istream* in, std::string_view text)
      : name_(name), in_(in), rest_(text) {}

  std::string_view next() {
    std::string_view piece = in_ != nullptr ? read() : rest_.substr(0, kPiece);
    if (in_ == nullptr) rest_.remove_prefix(piece.size());
    if (isFirst_ && piece.starts_with(kByteOrderMark)) piece.remove_prefix(kByteOrderMark.size());
    isFirst_ = false;
    return piece;
  }

  std::string all(std::string_view first) {
    std::string text(first);
    for (auto piece = next(); !piece.empty(); piece = next()) text += piece;
    return text;
  }

 private:
  std::string_view read() {
    in_->read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (in_->bad()) throw SourceProblem{name_ + ": it cannot be read"};
    const auto size = static_cast<std::size_t>(in_->gcount());
    total_ += size;
    if (total_ > limits::kAnswerBytes) throw SourceProblem{name_ + ": it is too large"};
    return {buffer_.data(), size};
  }

  const std::string& name_;
  std::istream* in_;
  std::string_view rest_;
  std::array<char, kPiece> buffer_{};
  std::size_t total_ = 0;
  bool isFirst_ = true;
};

void readForm(const PastOperand& operand, Pieces& pieces, const TakeTable& take,
              PastReading& reading) {
  std::string_view first = pieces.next();
  const auto begin = std::min(first.find_first_not_of(" \t\r\n"), first.size());
  if (begin == first.size()) throw SourceProblem{operand.name + ": it is empty"};
  const char kind = first[begin];
  if (kind == '{') return readDailyJson(operand.name, pieces.all(first), take, reading);
  const NextPiece next = [&]() -> std::string_view {
    return first.empty() ? pieces.next() : std::exchange(first, {});
  };
  if (kind == '<') return readEuroDays(operand.name, next, take, reading);
  readEuroLines(operand.name, next, take, reading);
}

void readOperand(const PastOperand& operand, const TakeTable& take, PastReading& reading) {
  std::ifstream file;
  std::istream* in = nullptr;
  if (operand.name == "-") {
    in = &std::cin;
  } else if (!operand.text) {
    file.open(operand.name, std::ios::binary);
    if (!file.is_open()) throw SourceProblem{operand.name + ": " + std::strerror(errno)};
    in = &file;
  }
  const auto pieces = std::make_unique<Pieces>(
      operand.name, in, operand.text ? std::string_view(*operand.text) : std::string_view());
  readForm(operand, *pieces, take, reading);
}

}  // namespace
}  // namespace fexora::sources

void fexora_past_tables(const fexora::sources::PastOperand& operand,
                        const fexora::sources::TakeTable& take,
                        fexora::sources::PastReading& reading) {
  try {
    fexora::sources::readOperand(operand, take, reading);
  } catch (const fexora::sources::SourceProblem& problem) {
    reading.problem = problem.message;
  }
}
