// The log of a session: to whom the caller says, and until he does, its first lines kept for him.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "fexora/platform/base/Log.h"

namespace fexora::c {

class SessionLog final : public Log {
 public:
  using Taker = void(void* data, const char* text);

  void write(std::string_view line) override;
  // Gives the kept lines at once. May throw std::bad_alloc.
  void setTaker(Taker* taker, void* data);

 private:
  static constexpr std::size_t kKept = 16;

  std::mutex mutex_;
  Taker* taker_ = nullptr;
  void* data_ = nullptr;
  std::vector<std::string> kept_;
};

}  // namespace fexora::c
