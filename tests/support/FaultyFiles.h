// Another file seam's operations with faults among them, and a record of what was called.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/ForwardingFiles.h"

namespace fexora::test {

class FaultyFiles final : public ForwardingFiles {
 public:
  struct Call {
    std::string_view operation;
    std::string path;
    bool failed;  // by our hand
  };

  using ForwardingFiles::ForwardingFiles;

  // Makes the call with this number (the next one is 0) fail with a POSIX error number, and with
  // `fromThenOn` all later ones. Forgets the record.
  void failCall(std::size_t number, int error, bool fromThenOn) {
    calls_.clear();
    first_ = number;
    error_ = error;
    fromThenOn_ = fromThenOn;
  }
  void heal() { failCall(0, 0, false); }

  const std::vector<Call>& calls() const { return calls_; }
  // Whether one of these calls was made, and went as `failed` says.
  bool hasCall(std::string_view operation, bool failed) const {
    return std::any_of(calls_.begin(), calls_.end(), [&](const Call& call) {
      return call.operation == operation && call.failed == failed;
    });
  }

 private:
  std::optional<std::error_code> enter(std::string_view operation,
                                       const std::string& path) override {
    const std::size_t number = calls_.size();
    const bool fails = error_ != 0 && (number == first_ || (fromThenOn_ && number > first_));
    calls_.push_back({operation, path, fails});
    if (!fails) return std::nullopt;
    return std::error_code(error_, std::generic_category());
  }

  std::vector<Call> calls_;
  std::size_t first_ = 0;
  int error_ = 0;  // none when 0
  bool fromThenOn_ = false;
};

}  // namespace fexora::test
