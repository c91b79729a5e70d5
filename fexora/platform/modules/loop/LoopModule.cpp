#include "fexora/platform/foundation/NoDestructor.h"
#include "fexora/platform/modules/ModuleEntries.h"
#include "fexora/platform/modules/loop/GlibRunLoop.h"

fexora::RunLoop* fexora_loop_module() {
  static fexora::NoDestructor<fexora::GlibRunLoop> loop;
  return &*loop;
}
