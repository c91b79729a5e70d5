// What the library takes from the desktop, gathered so that a host or a test can replace each
// piece.
#pragma once

#include "fexora/platform/base/Log.h"
#include "fexora/platform/base/Resources.h"
#include "fexora/platform/files/Files.h"
#include "fexora/platform/loop/RunLoop.h"
#include "fexora/platform/network/Transport.h"
#include "fexora/platform/strings/HostStrings.h"
#include "fexora/platform/text/Text.h"
#include "fexora/platform/values/NotificationCenter.h"
#include "fexora/platform/watch/FolderWatch.h"

namespace fexora {

// Non-owning; each piece outlives whatever was made with the record. Never null.
struct FEXORA_API Platform {
  Files* files;
  FolderWatch* folderWatch;
  RunLoop* loop;
  Transport* transport;
  Text* text;
  NotificationCenter* notifications;
  Log* log;
  HostStrings* strings;
  Resources* resources;

  // The pieces that the process uses: the shared instances, and whatever is given none (records,
  // NSNumber's texts, parseAmount() and readAmount(), facts and names, what an observer or a
  // function of the loop throws), which asks by Text::process(), Log::process() and so on.
  //
  // At first they are the library's own: Text::builtIn() and so on. A host that brings pieces of
  // its own sets them here on the main thread before it first uses the library; they then live to
  // the end of the process. The pieces that it leaves take their partners from here too, at their
  // first use: with a loop of the host's, none of ours is opened. A piece that wraps the library's
  // own wraps `builtIn()`, since `process()` is then itself. For a record of one's own, copy this
  // one and change fields.
  static Platform& process();
};

}  // namespace fexora
