// One program an application folder: a second start finds the first and has it show its window.
#pragma once

#include <QLocalServer>
#include <QString>
#include <functional>

#include "platform/process_lock.h"

namespace guanchao {

class OnlyProgram {
public:
    explicit OnlyProgram(const QString& folder);

    // True for the first of the folder, which from now on hears of further starts. A folder that
    // can't be written to bars nobody.
    bool isFirst();

    // For one that isn't the first: asks the first to show its window. False if it doesn't answer.
    bool raiseFirst() const;

    // What the first does when it is asked to.
    std::function<void()> raised = [] {};

private:
    void answer();

    QString serverName_;
    ProcessLock lock_;
    QLocalServer server_;
};

}  // namespace guanchao
