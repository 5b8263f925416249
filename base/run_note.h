// The beginning and the end of a run, in the log. It may stand across an await.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <stop_token>

namespace guanchao {

class RunNote {
public:
    // `stop` tells at the end whether a run that says nothing was stopped or has failed.
    RunNote(const QString& name, std::stop_token stop);
    ~RunNote();
    RunNote(const RunNote&) = delete;
    RunNote& operator=(const RunNote&) = delete;

    // That it has come to nothing, or not to all, as a failure beside its end.
    void failed(const QString& reason, const QString& counts = {});
    // What it came to: counts, and no names.
    void ended(const QString& counts = {}, bool byUser = false);

private:
    void end(const QString& word, const QString& counts);

    QString name_;
    std::stop_token stop_;
    QElapsedTimer since_;
    QString outcome_;
};

}  // namespace guanchao
