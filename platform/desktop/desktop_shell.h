// Shell by the desktop's default programs.
#pragma once

#include <QDesktopServices>
#include <QUrl>

#include "platform/shell.h"

namespace guanchao {

class DesktopShell : public Shell {
public:
    void open(const QString& target) override {
        QDesktopServices::openUrl(QUrl::fromUserInput(target));
    }
};

}  // namespace guanchao
