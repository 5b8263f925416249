// Shell by the desktop's default programs.
#pragma once

#include <QDesktopServices>
#include <QProcess>
#include <QRegularExpression>
#include <QUrl>

#include "platform/shell.h"

namespace guanchao {

class DesktopShell : public Shell {
public:
    void open(const QString& target) override {
        if (!holdsLooseMark(target) ||
            !QProcess::startDetached(QStringLiteral("xdg-open"), {target})) {
            QDesktopServices::openUrl(QUrl::fromUserInput(target));
        }
    }

private:
    // An address with a "%" before no two digits, as in "100%%B9%C9". QUrl would encode every "%"
    // of it once more, so that its words could no longer be read.
    static bool holdsLooseMark(const QString& target) {
        static const QRegularExpression looseMark(QStringLiteral("^https?:.*%(?![0-9a-f]{2})"),
                                                  QRegularExpression::CaseInsensitiveOption);
        return looseMark.match(target).hasMatch();
    }
};

}  // namespace guanchao
