// What a window reads of services beside each other: each reading by itself, so that one that
// brings nothing keeps no other from the screen. What could not be had is kept in words until it
// comes; the messages are told once all that is under way together has ended.
#pragma once

#include <QCoro/QCoroTask>
#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <stop_token>

#include "base/activity.h"
#include "base/runs.h"
#include "platform/dialogs.h"

namespace guanchao {

// Thrown by a reading that brought nothing: why, in words, and the message for who asked.
struct NotHad {
    QString words;
    QString message;
};

// One reading, and what it reads, in words.
struct Reading {
    QString what;
    Runs::Job job;
};

class Readings {
public:
    // `ended` is called before the messages, which come last: what stands under one is complete.
    Readings(Dialogs& dialogs, Failures& failures, std::function<void()> ended)
        : dialogs_(dialogs), failures_(failures), ended_(std::move(ended)) {}

    // An operation that may start readings; the first begins without messages.
    void begin();
    void end();
    // What an operation says itself.
    void say(const QString& message);

    // All at once; `loading` is told when they begin and however they end.
    QCoro::Task<> takeAll(QList<Reading> readings, std::function<void(bool)> loading,
                          std::stop_token stop);
    // One whose lack is not worth a message.
    QCoro::Task<> takeQuietly(Reading reading, std::stop_token stop);

    bool lacks(const QString& what) const { return lacks_.contains(what); }
    void forget(const QString& what) { lacks_.remove(what); }
    // Why one of them could not be had, `first` before all others; empty if all came.
    QString lackWords(const QString& first) const;

private:
    // Why a reading brought nothing; all empty if it did.
    struct Lack {
        QString words;
        QString message;
        std::optional<OperationError> failure;
    };

    QCoro::Task<Lack> attempt(Reading reading, std::stop_token stop);
    void finish();

    Dialogs& dialogs_;
    Failures& failures_;
    std::function<void()> ended_;
    QMap<QString, QString> lacks_;           // at the last reading of each
    QStringList messages_;                   // each once
    std::optional<OperationError> failure_;  // the first one
    int underWay_ = 0;                       // operations and groups of readings
};

}  // namespace guanchao
