// The lines of the main window that tell of its services: the band of those for practice, and the
// button for those that fail time and again; a click on it opens the window of the services.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "frame/environment.h"

namespace guanchao {

class ServiceLine : public QObject {
    Q_OBJECT

public:
    ServiceLine(QLabel& band, QPushButton& line, Environment& environment,
                std::function<void()> open);

private:
    void look();

    QLabel& band_;
    QPushButton& line_;
    Environment& environment_;
    QTimer looks_;
};

}  // namespace guanchao
