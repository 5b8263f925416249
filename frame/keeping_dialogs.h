// The dialogs that windows are given: whatever is closed under a question stays alive until the
// code that asked it has gone on to its end.
#pragma once

#include "frame/open_windows.h"
#include "platform/dialogs.h"

namespace guanchao {

class KeepingDialogs : public Dialogs {
public:
    KeepingDialogs(Dialogs& dialogs, OpenWindows& windows) : dialogs_(dialogs), windows_(windows) {}

    void tell(const QString& text, const QString& title) override;
    bool ask(const QString& text, const QString& title) override;
    bool askToLose(const QString& text, const QString& title) override;
    QString input(const QString& prompt, const QString& title, const QString& text) override;
    QString dakaiwenjian(const QString& title, const QString& folder, const QString& file) override;
    QString baocunwenjian(const QString& folder, const QString& file,
                          const QStringList& filters) override;

private:
    Dialogs& dialogs_;
    OpenWindows& windows_;
};

}  // namespace guanchao
