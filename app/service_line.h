// The line of the main window that tells of services that fail time and again; a click opens the
// window of the services.
#pragma once

#include <QPushButton>
#include <QTimer>
#include <functional>

#include "frame/environment.h"

namespace guanchao {

class ServiceLine : public QObject {
    Q_OBJECT

public:
    ServiceLine(QPushButton& line, Environment& environment, std::function<void()> open);

private:
    void look();

    QPushButton& line_;
    Environment& environment_;
    QTimer looks_;
};

}  // namespace guanchao
