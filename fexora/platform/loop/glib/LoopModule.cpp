#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/loop/glib/GlibRunLoop.h"

fexora::RunLoop* fexora_loop_module() {
  static fexora::NoDestructor<fexora::GlibRunLoop> loop;
  return &*loop;
}
