// A desktop of a test's own: real files in a scratch container, everything else in its hand.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/Platform.h"
#include "fexora/platform/strings/TableStrings.h"

#include "tests/support/ScratchFolder.h"
#include "tests/support/VirtualRunLoop.h"

namespace fexora::test {

class RecordingLog final : public Log {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  // How many lines contain `part`.
  int count(std::string_view part) const;

  std::vector<std::string> lines;
};

// Calls its watchers when the test says that something was written.
class VirtualFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& folder, const std::string& ignoredPrefix,
                               std::function<void()> changed) override;
  void change();

 private:
  std::vector<std::weak_ptr<std::function<void()>>> watches_;
};

// Keeps each request until the test answers it.
class ScriptedTransport final : public Transport {
 public:
  struct Request {
    std::string address;
    Reader read;
    Completion complete;
  };
  void get(const std::string& address, Reader read, Completion complete) override {
    requests.push_back({address, read, std::move(complete)});
  }
  // Answers the oldest request; fails the test when there is none.
  void answer(std::optional<Value> root, std::optional<ResponseError> error = {});

  std::vector<Request> requests;
};

// Resources in a folder of the test's; none until a folder is named, which gives the built-in ones.
class FolderResources final : public Resources {
 public:
  std::optional<std::string> path(std::string_view name, std::string_view extension) override;
  std::optional<std::string> folder;
};

// The pieces and the record of them. Stores find their folder by FEXORA_CONTAINER: see
// TestContainer.
class VirtualPlatform {
 public:
  explicit VirtualPlatform(Files& files = Files::process());

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
  EnvironmentVariable(std::string name, const std::optional<std::string>& value);
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable();

 private:
  void put(const std::optional<std::string>& value);
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
