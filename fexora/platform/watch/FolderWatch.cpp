#include "fexora/platform/watch/FolderWatch.h"

namespace fexora {

FolderWatch::Watch::~Watch() = default;
FolderWatch::~FolderWatch() = default;

}  // namespace fexora
