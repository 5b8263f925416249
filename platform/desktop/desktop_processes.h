// Processes by /proc, as far as they belong to the user.
#pragma once

#include "platform/processes.h"

namespace guanchao {

class DesktopProcesses : public Processes {
public:
    explicit DesktopProcesses(const QString& folder) : folder_(folder) {}

    void endByImageName(const QString& imageName) override;
    bool isRunning(const QString& imageName) override;
    bool start(const QString& program, const QString& argument) override;
    void endThisProcess() override;

private:
    QString folder_;
};

}  // namespace guanchao
