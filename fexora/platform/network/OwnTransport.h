// A transport for a loop of one's own, beside the process's.
#pragma once

#include <memory>
#include <string>

#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/Files.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/network/NetOptions.h"
#include "fexora/platform/network/Transport.h"

namespace fexora {

// Sends requests and completes them on `loop`, for a Platform that is not the process's; as many as
// one likes. Opens the network's module at once, which takes some milliseconds the first time in a
// process. Null, with one line in `problem`, where it is missing or the machine gives no thread or
// descriptor. What it is given outlives it; it is used and goes on the thread that runs the loop,
// also from inside a completion. Requests in flight then never complete. Still there at the exit of
// the process, it sends and completes nothing more. Any thread; may throw std::bad_alloc.
FEXORA_API std::unique_ptr<Transport> ownTransport(RunLoop& loop, Log& log, Files& files,
                                                   const NetOptions& options, std::string& problem);

}  // namespace fexora
