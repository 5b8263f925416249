// The author that a new article begins with: a text that stands for this installation.
#pragma once

#include <QString>

namespace guanchao {

// Eight characters, always the same for one application folder on one machine.
QString installationText(const QString& applicationFolder);

}  // namespace guanchao
