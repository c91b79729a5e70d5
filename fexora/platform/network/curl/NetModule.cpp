#include <cstdlib>
#include <memory>
#include <mutex>
#include <set>
#include <type_traits>
#include <utility>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/network/curl/CurlTransport.h"

namespace {

// The one thing that is taken down at exit: the worker must have ended before the libraries that it
// runs in are. The transport itself stays, in case something of the host's still asks it.
struct ProcessTransport {
  fexora::CurlTransport* transport;
  ~ProcessTransport() {
    if (transport != nullptr) transport->stop();
  }
};

// libcurl writes each connection's keys into the file that this variable names, and cannot be told
// not to: with more rights than its user has, the process would write where its user may not.
bool writesKeysWhereTheUserSays() {
  return fexora::hasMoreRightsThanItsUser() && std::getenv("SSLKEYLOGFILE") != nullptr;
}

std::unique_ptr<fexora::CurlTransport> make(fexora::RunLoop* loop, fexora::Log* log,
                                            fexora::Files* files,
                                            const fexora::NetOptions* options) {
  if (writesKeysWhereTheUserSays()) return nullptr;
  return fexora::CurlTransport::make(*loop, *log, *files, *options);
}

// One of a host's own, which its thread may still use while another one ends the process.
class OwnTransport final : public fexora::Transport {
 public:
  explicit OwnTransport(std::unique_ptr<fexora::CurlTransport> inner) : inner_(std::move(inner)) {
    const std::lock_guard lock(all().mutex);
    all().transports.insert(this);
    // Registered after what the libraries underneath have registered: called before that.
    static const AtExit atExit;
  }
  OwnTransport(const OwnTransport&) = delete;
  OwnTransport& operator=(const OwnTransport&) = delete;
  ~OwnTransport() override {
    const std::lock_guard lock(all().mutex);
    all().transports.erase(this);
    inner_.reset();
  }

  void get(const std::string& address, Reader read, Completion complete) override {
    follow(address, read, std::move(complete), nullptr);
  }
  void follow(const std::string& address, Reader read, Completion complete,
              const std::shared_ptr<fexora::Transfer>& transfer) override {
    const std::lock_guard lock(all().mutex);
    inner_->follow(address, read, std::move(complete), transfer);
  }

 private:
  struct All {
    std::mutex mutex;
    std::set<OwnTransport*> transports;
  };
  struct AtExit {
    ~AtExit() {
      const std::lock_guard lock(all().mutex);
      for (OwnTransport* const transport : all().transports) transport->inner_->stop();
    }
  };
  static All& all() {
    static fexora::NoDestructor<All> all;
    return *all;
  }

  std::unique_ptr<fexora::CurlTransport> inner_;
};

static_assert(std::is_same_v<decltype(fexora_net_module), fexora::NetModuleEntry>);
static_assert(std::is_same_v<decltype(fexora_net_own), fexora::NetModuleEntry>);

}  // namespace

fexora::Transport* fexora_net_module(fexora::RunLoop* loop, fexora::Log* log, fexora::Files* files,
                                     const fexora::NetOptions* options) {
  static const ProcessTransport process{make(loop, log, files, options).release()};
  return process.transport;
}

fexora::Transport* fexora_net_own(fexora::RunLoop* loop, fexora::Log* log, fexora::Files* files,
                                  const fexora::NetOptions* options) {
  auto inner = make(loop, log, files, options);
  return inner != nullptr ? new OwnTransport(std::move(inner)) : nullptr;
}
