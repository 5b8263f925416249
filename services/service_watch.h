// HttpClient over another that remembers of each service how it has answered, for windows that tell
// the user, and writes the failures of each into the log: a line where they begin and one where
// they end, whatever lies between. What the same host is asked for another purpose, or in another
// kind, counts by itself. In the thread that shows.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QTimer>
#include <optional>

#include "platform/clock.h"
#include "platform/http_client.h"

namespace guanchao {

class ServiceWatch : public HttpClient {
public:
    struct State {
        int answers = 0;
        QDateTime answered;      // when it did last; invalid if it never has
        QDateTime failed;        // when it last failed; likewise
        QString reason;          // of that, in Chinese
        QDateTime failsSince;    // the first one in a row; invalid once it has answered
        int failuresInARow = 0;  // those of requests that were under way together count as one
        QDateTime counted;       // when the last one of these was
    };

    ServiceWatch(HttpClient& http, const Clock& clock);
    // What fails then stands in the log with its count.
    ~ServiceWatch() override;

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override;
    void complain(const Service& service, const QString& reason) override;

    // Of a page that another than this one has asked for: why it didn't come; empty if it did.
    void note(const Service& service, const QString& failure);

    State stateOf(const Service& service) const;
    // Time and again, so that it is no single miss.
    bool isFailing(const Service& service) const;

private:
    // From the first failure to an answer that comes a while after the last one.
    struct Spell {
        QString service;
        QDateTime begun;
        QDateTime last;
        int count = 0;
        QStringList reasons;  // each once
    };
    struct Watched {
        State state;
        std::optional<State> beforeAnswer;  // while a reader may still complain of the answer
        std::optional<Spell> spell;
    };

    void takeAnswer(Watched& watched);
    void noteFailure(const Service& service, Watched& watched, const QString& reason) const;
    void tellWhatIsBack();
    static void tell(const Spell& spell, const QString& words);

    HttpClient& http_;
    const Clock& clock_;
    QHash<QString, Watched> watched_;  // by purpose, kind and host
    QTimer settled_;                   // once whoever reads an answer has had the time to complain
};

// In Chinese: 正常，应答 12 次，最近 10:02:03, or why it didn't the last time.
QString stateWords(const Service& service, const ServiceWatch::State& state);

}  // namespace guanchao
