#include "fexora/platform/modules/ModuleEntries.h"

fexora::Text* fexora_text_module() { return nullptr; }
