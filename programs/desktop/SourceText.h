// Who has published past rates, as people call them.
#pragma once

#include <QString>
#include <string>

namespace fexora::desktop {

// "European Central Bank" for the history's "ecb".
QString sourceInWords(const std::string& source);

}  // namespace fexora::desktop
