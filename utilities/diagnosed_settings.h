// What the diagnosis tells of the screens and of the user's choices: numbers and switches alone.
#pragma once

#include <QStringList>

#include "frame/environment.h"

namespace guanchao {

QStringList settingLines(const Environment& environment);

}  // namespace guanchao
