// Another file seam's operations with faults among them, and a record of what was called.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
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

  // Makes each call for which `fails`, given its number from now on, fail with a POSIX error
  // number. Forgets the record.
  void fail(int error, std::function<bool(std::size_t number, const Call& call)> fails) {
    calls_.clear();
    error_ = {error, std::generic_category()};
    fails_ = std::move(fails);
  }
  // The call with this number, and with `fromThenOn` all later ones.
  void failCall(std::size_t number, int error, bool fromThenOn) {
    fail(error, [=](std::size_t now, const Call& /*call*/) {
      return now == number || (fromThenOn && now > number);
    });
  }
  void heal() { fail(0, nullptr); }

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
    calls_.push_back({operation, path, false});
    Call& call = calls_.back();
    call.failed = fails_ && fails_(calls_.size() - 1, call);
    return call.failed ? std::optional(error_) : std::nullopt;
  }

  std::vector<Call> calls_;
  std::error_code error_;
  std::function<bool(std::size_t, const Call&)> fails_;
};

}  // namespace fexora::test
