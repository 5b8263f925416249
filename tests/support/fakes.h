// The platform services as tests play them: set, scripted and recorded.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "base/later.h"
#include "base/log.h"
#include "base/runs.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/http_client.h"
#include "platform/notifier.h"
#include "platform/processes.h"
#include "platform/shell.h"
#include "platform/sound.h"
#include "platform/tray.h"
#include "store/failure.h"
#include "store/store_error.h"
#include "tests/support/outcome_of.h"

namespace guanchao {

struct FakeClock : Clock {
    QDateTime now() const override {
        if (onNow) {
            onNow();
        }
        return moment;
    }
    std::chrono::milliseconds uptime() const override { return up; }

    void moveOn(std::chrono::milliseconds time) {
        moment = moment.addDuration(time);
        up += time;
    }

    // A Tuesday, in the morning session.
    QDateTime moment = QDateTime(QDate(2026, 11, 24), QTime(10, 0, 0));
    std::chrono::milliseconds up{0};
    std::function<void()> onNow;  // what happens while somebody asks
};

// The entries of a kind, as long as it lives.
struct KeptLog : Log {
    explicit KeptLog(LogKind wanted) : kind(wanted) { setLog(this); }
    ~KeptLog() override { setLog(nullptr); }
    KeptLog(const KeptLog&) = delete;
    KeptLog& operator=(const KeptLog&) = delete;

    void write(const LogEntry& entry) override {
        if (entry.kind == kind) {
            lines << entry.doing + u'|' + entry.happened;
        }
    }

    LogKind kind;
    QStringList lines;
};

class FakeDialogs : public Dialogs {
public:
    void tell(const QString& text, const QString& title) override {
        shown << title + u'|' + text;
        if (boxes) {
            boxes->tell(text, title);
        }
    }
    void tellDone(const QString& text) override {
        done << text;
        tell(text, programName);
    }
    void tellFailure(const QString& text) override {
        shown << programName + u'|' + text;
        if (boxes) {
            boxes->tellFailure(text);
        }
    }
    QCoro::Task<bool> ask(std::stop_token stop, QString text, QString title) override {
        co_await stand(title + u'|' + text, onAsk, stop);
        if (!boxes) {
            co_return answer;
        }
        const bool yes = co_await boxes->ask(stop, text, title);
        co_return yes;
    }
    QCoro::Task<Unsaved> askToSave(std::stop_token stop, QString text, QString title) override {
        co_await stand(title + u'|' + text, onAsk, stop);
        if (!boxes) {
            co_return unsaved;
        }
        const Unsaved chosen = co_await boxes->askToSave(stop, text, title);
        co_return chosen;
    }
    QCoro::Task<Existing> askToReplace(std::stop_token stop, QString text, QString title) override {
        co_await stand(title + u'|' + text, onAsk, stop);
        if (!boxes) {
            co_return existing;
        }
        const Existing chosen = co_await boxes->askToReplace(stop, text, title);
        co_return chosen;
    }
    QCoro::Task<QString> input(std::stop_token stop, QString prompt, QString title,
                               QString text) override {
        co_await stand(title + u'|' + prompt + u'|' + text, onInput, stop);
        co_return QString(typed);  // which is moved from
    }
    QCoro::Task<QString> dakaiwenjian(std::stop_token stop, QString title, QString folder,
                                      QString file) override {
        co_await stand(title + u'|' + folder + u'|' + file, {}, stop);
        co_return QString(picked);
    }
    QCoro::Task<QString> pickFolder(std::stop_token stop, QString title, QString folder) override {
        co_await stand(title + u'|' + folder, {}, stop);
        co_return QString(picked);
    }
    QCoro::Task<QString> baocunwenjian(std::stop_token stop, QString folder, QString file,
                                       QStringList filters) override {
        co_await stand(folder + u'|' + file + u'|' + filters.join(u'|'), {}, stop);
        co_return QString(picked);
    }

    QStringList shown;  // "title|text", in order; of an input box "title|prompt|default"
    QStringList done;   // of these, what was told with the sign of information
    bool answer = true;
    Unsaved unsaved = Unsaved::discard;
    Existing existing = Existing::add;
    Dialogs* boxes = nullptr;  // real ones, for a user at real keys
    // What happens while the box stands.
    std::function<void()> onAsk, onInput;
    std::shared_ptr<Later<bool>> gate;  // the next question waits for it
    QString typed;
    QString picked;

private:
    QCoro::Task<> stand(QString words, std::function<void()> meanwhile, std::stop_token stop) {
        shown << words;
        if (meanwhile) {
            meanwhile();
        }
        endIfStopped(stop);
        if (const auto answered = gate) {
            co_await answered->orStop(stop);
        }
    }
};

struct FakeFailures : Failures {
    void report(const std::exception& failure) override {
        texts << QString::fromUtf8(failure.what());
        told << failureText(failure);
        if (const auto* refused = dynamic_cast<const StoreError*>(&failure)) {
            statements << refused->statement();
        }
        if (box) {
            box->report(failure);
        }
    }

    QStringList texts;
    QStringList told;         // in the words of the box
    QStringList statements;   // that a store refused
    Failures* box = nullptr;  // a real one
};

struct FakeHttp : HttpClient {
    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override {
        paths << path;
        addresses << service.host + path;
        if (onGet) {
            onGet();
        }
        endIfStopped(stop);
        if (const std::optional<HttpReply> reply = instead ? instead(path) : std::nullopt) {
            co_return HttpReply(*reply);
        }
        if (client) {
            const HttpReply reply = co_await client->get(service, path, stop);
            co_return reply;
        }
        if (gate) {
            co_await gate->orStop(stop);
        }
        const std::optional<QByteArray> body = answer ? answer(path) : std::nullopt;
        if (!body) {
            co_return HttpReply{HttpReply::Outcome::silent, 0, {}};
        }
        co_return HttpReply{HttpReply::Outcome::answered, 200, *body};
    }

    std::unique_ptr<HttpClient> client;  // a real one, for a service at a real address
    std::function<std::optional<HttpReply>(const QString& path)> instead;  // of all others
    std::function<void()> onGet;        // what happens while a request is under way
    std::shared_ptr<Later<bool>> gate;  // the next request waits for it
    QStringList paths;
    QStringList addresses;  // with the host of the service
    std::function<std::optional<QByteArray>(const QString& path)> answer;
};

struct FakeTray : Tray {
    bool available() const override { return isThere; }
    void add() override { calls << QStringLiteral("add"); }
    void setTip(const QString& tip) override { calls << QStringLiteral("tip ") + tip; }
    void remove() override { calls << QStringLiteral("remove"); }

    bool isThere = true;
    QStringList calls;
};

struct FakeProcesses : Processes {
    void endByImageName(const QString& imageName) override { ended << imageName; }
    bool isRunning(const QString& imageName) override { return running.contains(imageName); }
    bool start(const QString& program, const QString& argument) override {
        if (onStart) {
            onStart();
        }
        started << program + u'|' + argument;
        return canStart;
    }
    void endThisProcess() override { ended << QStringLiteral("this"); }

    QStringList ended;
    QStringList running;
    QStringList started;  // "program|argument"
    bool canStart = true;
    std::function<void()> onStart;
};

struct FakeSound : Sound {
    void play(const QString& file, int count) override {
        played << file + u'|' + QString::number(count);
    }
    void stop() override {
        if (stopped_) {
            stopped_();
        }
    }
    void whenStopped(std::function<void()> handler) override { stopped_ = std::move(handler); }

    QStringList played;  // "file|count"

private:
    std::function<void()> stopped_;
};

struct FakeNotifier : Notifier {
    void notify(const QString& title, const QString& text) override {
        notes << title + u'|' + text;
    }

    QStringList notes;  // "title|text"
};

struct FakeClipboard : Clipboard {
    void setText(const QString& text) override { texts << text; }
    QString text() const override { return texts.value(texts.size() - 1); }

    QStringList texts;
};

struct FakeShell : Shell {
    void open(const QString& target) override { opened << target; }

    QStringList opened;
};

}  // namespace guanchao
