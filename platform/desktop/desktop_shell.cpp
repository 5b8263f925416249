#include "platform/desktop/desktop_shell.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// An address goes out as it stands: QUrl would encode a "%" that no two digits follow, as the first
// of "100%%B9%C9", once more. The opener may be what is opened, and then lives on after this
// program: nothing here deletes it before it has ended.
void DesktopShell::open(const QString& target) {
    auto* opener = new QProcess;
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(opener, &QProcess::finished, opener, [this, opener, target](int code) {
        opener->deleteLater();
        if (code != 0) {
            tellNotOpened(target);
        }
    });
    QObject::connect(opener, &QProcess::errorOccurred, opener, [this, opener, target](auto error) {
        if (error != QProcess::FailedToStart) {
            return;
        }
        opener->deleteLater();
        if (!QDesktopServices::openUrl(QUrl::fromUserInput(target))) {
            tellNotOpened(target);
        }
    });
    opener->start(u"xdg-open"_s, {target});
}

}  // namespace guanchao
