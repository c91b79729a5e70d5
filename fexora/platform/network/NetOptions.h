// What bounds a request, and where answers are kept.
#pragma once

#include <cstddef>
#include <string>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/base/Limits.h"

namespace fexora {

class Files;
class Log;
class RunLoop;
class Transport;

struct NetOptions {
  double connectSeconds = limits::kConnectSeconds;  // name look-up included
  double requestSeconds = limits::kRequestSeconds;  // from the start to the last byte
  std::size_t answerBytes = limits::kAnswerBytes;   // of the body once inflated
  std::size_t headerBytes = limits::kHeaderBytes;   // of all answers on the way, redirects included
  int redirects = limits::kRedirects;

  // Where answers are kept for revalidation; empty: nowhere. Made when missing.
  std::string cacheFolder;
  // A file of the certificates to trust; empty: those of the system.
  std::string authorities;
  // Whom a kept answer belongs to: another container never sees it.
  std::string container;
};

// The places of this process's user and container: $XDG_CACHE_HOME/fexora (when absolute), else
// .cache/fexora under $HOME, else nowhere.
FEXORA_API NetOptions processNetOptions();

// The functions that the net module offers as fexora_net_module and fexora_net_own.
using NetModuleEntry = Transport*(RunLoop*, Log*, Files*, const NetOptions*);

}  // namespace fexora
