// What a window need not have before a person sees it.
#pragma once

#include <functional>

class QWidget;

namespace fexora::desktop {

// Calls `run` from the event loop after the window has been painted for the first time.
void onceItIsPainted(QWidget& window, std::function<void()> run);

}  // namespace fexora::desktop
