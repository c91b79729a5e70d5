// An interrupted call is made again, a bounded number of times.
#pragma once

#include <system_error>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/Files.h"

namespace fexora {

inline const std::error_code& errorOf(const std::error_code& error) noexcept {
  return error;
}
template <class T>
const std::error_code& errorOf(const FileResult<T>& result) noexcept {
  return result.error();
}

template <class Call>
auto retryInterrupted(Call call) {
  auto result = call();
  for (int i = 0; i < limits::kInterruptedRetries && errorOf(result) == std::errc::interrupted;
       ++i) {
    result = call();
  }
  return result;
}

}  // namespace fexora
