#include "fexora/platform/modules/ModuleEntries.h"

fexora::Transport* fexora_net_module(fexora::RunLoop* /*loop*/, fexora::Log* /*log*/) {
  return nullptr;
}
