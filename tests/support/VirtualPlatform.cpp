#include "tests/support/VirtualPlatform.h"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>

namespace fexora::test {

int RecordingLog::count(std::string_view part) const {
  return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
    return line.find(part) != std::string::npos;
  }));
}

std::unique_ptr<FolderWatch::Watch> VirtualFolderWatch::watch(const std::string& /*folder*/,
                                                              const std::string& /*ignoredPrefix*/,
                                                              std::function<void()> changed) {
  struct VirtualWatch final : Watch {
    std::shared_ptr<std::function<void()>> changed;
  };
  auto watch = std::make_unique<VirtualWatch>();
  watch->changed = std::make_shared<std::function<void()>>(std::move(changed));
  watches_.emplace_back(watch->changed);
  return watch;
}

void VirtualFolderWatch::change() {
  for (const auto& watch : std::vector(watches_)) {
    if (const auto changed = watch.lock()) (*changed)();
  }
}

void ScriptedTransport::answer(std::optional<Value> root, std::optional<ResponseError> error) {
  ASSERT_FALSE(requests.empty());
  const Request request = std::move(requests.front());
  requests.erase(requests.begin());
  std::shared_ptr<MappableModel> record;
  if (root && root->dictionary() != nullptr) {
    record = request.read(DictionarySource(*root->dictionary()));
  } else if (root) {
    error = ResponseError{ResponseError::Kind::notAnObject, request.address, "no object", 0};
  }
  request.complete(std::move(record), std::move(error));
}

std::optional<std::string> FolderResources::path(std::string_view name,
                                                 std::string_view extension) {
  if (!folder) return std::nullopt;
  return *folder + "/" + std::string(name) + "." + std::string(extension);
}

VirtualPlatform::VirtualPlatform(Files& files)
    : platform{&files,         &watch, &loop,    &transport, &Text::process(),
               &notifications, &log,   &strings, &resources} {}

EnvironmentVariable::EnvironmentVariable(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
  const char* before = std::getenv(name_.c_str());
  if (before != nullptr) before_ = before;
  put(value);
}

EnvironmentVariable::~EnvironmentVariable() {
  put(before_);
}

void EnvironmentVariable::put(const std::optional<std::string>& value) {
  if (value) {
    setenv(name_.c_str(), value->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

}  // namespace fexora::test
