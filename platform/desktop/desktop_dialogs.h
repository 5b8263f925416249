// Dialogs as message boxes over the window that has the focus.
#pragma once

#include <QMessageBox>

#include "platform/dialogs.h"

namespace guanchao {

class DesktopDialogs : public Dialogs {
public:
    void tell(const QString& text, const QString& title) override;
    bool ask(const QString& text, const QString& title) override;
    bool askToLose(const QString& text, const QString& title) override;
    QString input(const QString& prompt, const QString& title, const QString& text) override;
    QString dakaiwenjian(const QString& title, const QString& folder, const QString& file) override;
    QString baocunwenjian(const QString& folder, const QString& file,
                          const QStringList& filters) override;
};

}  // namespace guanchao
