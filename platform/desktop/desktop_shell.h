// Shell by the desktop's default programs.
#pragma once

#include "platform/shell.h"

namespace guanchao {

class DesktopShell : public Shell {
public:
    void open(const QString& target) override;
};

}  // namespace guanchao
