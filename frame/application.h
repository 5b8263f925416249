// The Qt application with the one place where failures of operations end: a single box, beside
// which the program goes on.
#pragma once

#include <QApplication>
#include <exception>
#include <functional>

#include "base/runs.h"
#include "platform/dialogs.h"

namespace guanchao {

class Application : public QApplication, public Failures {
    Q_OBJECT

public:
    Application(int& argc, char** argv);

    // Where failures are shown; without one they are only printed.
    void setDialogs(Dialogs* dialogs) { dialogs_ = dialogs; }

    // A label that doesn't ask for markup shows its text as it is: names from outside may hold
    // some. Tool tips are labels too. Alt and a letter that no control answers to, as that of a
    // grey button, writes nothing into a field.
    bool notify(QObject* receiver, QEvent* event) override;

    void report(const std::exception& failure) override;

private:
    void speakChinese();

    Dialogs* dialogs_ = nullptr;
};

}  // namespace guanchao
