// The platform services as tests play them: set, scripted and recorded.
#pragma once

#include <QHash>
#include <QStringList>
#include <functional>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/http.h"
#include "platform/processes.h"
#include "platform/shell.h"
#include "platform/tray.h"

namespace guanchao {

class FakeClock : public Clock {
public:
    QDateTime now() const override { return moment; }

    // A Tuesday, in the morning session.
    QDateTime moment = QDateTime(QDate(2026, 11, 24), QTime(10, 0, 0));
};

class FakeDialogs : public Dialogs {
public:
    void tell(const QString& text, const QString& title) override { shown << title + u'|' + text; }
    bool ask(const QString& text, const QString& title) override {
        shown << title + u'|' + text;
        return answer;
    }

    QStringList shown;  // "title|text", in order
    bool answer = true;
};

class FakePump : public EventPump {
public:
    void runPendingEvents() override {
        ++runs;
        if (onRun) {
            onRun();
        }
    }

    int runs = 0;
    std::function<void()> onRun;
};

class FakeHttp : public Http {
public:
    std::optional<QByteArray> get(const Service&, const QString& path) override {
        paths << path;
        return answer ? answer(path) : std::nullopt;
    }

    QStringList paths;
    std::function<std::optional<QByteArray>(const QString& path)> answer;
};

class FakeTray : public Tray {
public:
    bool available() const override { return isThere; }
    void add() override { calls << QStringLiteral("add"); }
    void setTip(const QString& tip) override { calls << QStringLiteral("tip ") + tip; }
    void remove() override { calls << QStringLiteral("remove"); }

    bool isThere = true;
    QStringList calls;
};

class FakeProcesses : public Processes {
public:
    void endByImageName(const QString& imageName) override { ended << imageName; }

    QStringList ended;
};

class FakeShell : public Shell {
public:
    void open(const QString& target) override { opened << target; }

    QStringList opened;
};

}  // namespace guanchao
