// The one function that each module offers. The pieces live to the end of the process.
#pragma once

#include <string>

#include "fexora/platform/base/Export.h"

namespace fexora {
class Files;
class Log;
class RateHistory;
struct NetOptions;
class RunLoop;
class Text;
class Transport;
struct XmlPlistModule;
}  // namespace fexora

extern "C" {

// GLib's default main context behind the RunLoop seam. Never null. Any thread.
FEXORA_API fexora::RunLoop* fexora_loop_module();
// ICU behind the Text seam. Never null.
FEXORA_API fexora::Text* fexora_text_module();
// expat behind readXmlPlist. Never null. Any thread.
FEXORA_API const fexora::XmlPlistModule* fexora_xml_module();
// HTTP behind the Transport seam, completing on `loop`; null when the machine gives no thread or
// descriptor for it. Main thread; the first call decides, later ones give the same transport.
FEXORA_API fexora::Transport* fexora_net_module(fexora::RunLoop* loop, fexora::Log* log,
                                                fexora::Files* files,
                                                const fexora::NetOptions* options);
// A transport of the caller's own, to be deleted on the thread of its loop; null as above. What it
// is given outlives it. Any thread.
FEXORA_API fexora::Transport* fexora_net_own(fexora::RunLoop* loop, fexora::Log* log,
                                             fexora::Files* files,
                                             const fexora::NetOptions* options);
// SQLite behind the RateHistory interface, in a folder that need not be there yet; the caller's to
// delete. Never null. Any thread.
FEXORA_API fexora::RateHistory* fexora_history_module(const std::string* folder,
                                                      fexora::Files* files, fexora::Log* log);

}  // extern "C"
