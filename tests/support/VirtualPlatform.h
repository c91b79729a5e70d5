// A desktop of a test's own: real files in a scratch container, everything else in its hand.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/Platform.h"
#include "fexora/platform/strings/TableStrings.h"

#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualRunLoop.h"

namespace fexora::test {

class RecordingLog final : public Log {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  // How many lines contain `part`.
  int count(std::string_view part) const {
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    }));
  }

  std::vector<std::string> lines;
};

class NoLog final : public Log {
 public:
  void write(std::string_view /*line*/) override {}
};

// Calls its watchers when the test says that something was written.
class VirtualFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& /*folder*/, const std::string& /*ignoredPrefix*/,
                               std::function<void()> changed) override {
    auto watch = std::make_unique<VirtualWatch>();
    watch->changed = std::make_shared<std::function<void()>>(std::move(changed));
    watches_.emplace_back(watch->changed);
    return watch;
  }
  void change() {
    for (const auto& watch : std::vector(watches_)) {
      if (const auto changed = watch.lock()) (*changed)();
    }
  }

 private:
  struct VirtualWatch final : Watch {
    std::shared_ptr<std::function<void()>> changed;
  };
  std::vector<std::weak_ptr<std::function<void()>>> watches_;
};

// Keeps each request until the test answers it.
class ScriptedTransport final : public Transport {
 public:
  struct Request {
    std::string address;
    Reader read;
    Completion complete;
    std::shared_ptr<Transfer> transfer;
  };
  void get(const std::string& address, Reader read, Completion complete) override {
    follow(address, read, std::move(complete), nullptr);
  }
  void follow(const std::string& address, Reader read, Completion complete,
              const std::shared_ptr<Transfer>& transfer) override {
    requests.push_back({address, read, std::move(complete), transfer});
  }
  // Answers the oldest request; fails the test when there is none.
  void answer(std::optional<Value> root, std::optional<ResponseError> error = {}) {
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

  std::vector<Request> requests;
};

// Resources in a folder of the test's; none until a folder is named, which gives the built-in ones.
class FolderResources final : public Resources {
 public:
  std::optional<std::string> path(std::string_view name, std::string_view extension) override {
    if (!folder) return std::nullopt;
    return *folder + "/" + std::string(name) + "." + std::string(extension);
  }
  std::optional<std::string> folder;
};

// The pieces and the record of them. Stores find their folder by FEXORA_CONTAINER: see
// TestContainer.
class VirtualPlatform {
 public:
  explicit VirtualPlatform(Files& files = Files::process())
      : platform{&files,         &watch, &loop,    &transport, &Text::process(),
                 &notifications, &log,   &strings, &resources} {}

  VirtualRunLoop loop;
  VirtualFolderWatch watch;
  ScriptedTransport transport;
  NotificationCenter notifications;
  RecordingLog log;
  TableStrings strings;
  FolderResources resources;
  Platform platform;
};

// Sets an environment variable for the life of a test, and then restores it.
class EnvironmentVariable {
 public:
  EnvironmentVariable(std::string name, const std::optional<std::string>& value)
      : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) before_ = before;
    put(value);
  }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable() { put(before_); }

 private:
  void put(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_.c_str(), value->c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
  }
  std::string name_;
  std::optional<std::string> before_;
};

// A scratch folder that is the container while the test runs.
class TestContainer {
 public:
  const std::string& path() const { return folder_.path(); }
  std::string file() const { return folder_ / "Store.plist"; }

 private:
  ScratchFolder folder_;
  EnvironmentVariable variable_{"FEXORA_CONTAINER", folder_.path()};
};

}  // namespace fexora::test
