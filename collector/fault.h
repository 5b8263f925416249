// What has gone wrong with a page or a row, told apart by what the user can do about it.
#pragma once

#include <QDateTime>
#include <QRegularExpression>
#include <QString>
#include <chrono>

#include "platform/http_client.h"

namespace guanchao {

enum class FaultKind : std::uint8_t {
    unreachable,  // no connection, or one that broke off
    refused,
    limited,  // asked too much: refused for it, or a question whether a person is asking
    silent,   // nothing within the time-out
    unreadable,
    notWritten,  // the store has refused the row
};

struct Fault {
    FaultKind kind = FaultKind::unreadable;
    QString words;                        // why, in Chinese
    std::chrono::milliseconds rest = {};  // how long the service is not to be asked
};

// 被拒绝.
QString faultName(FaultKind kind);

// What the user can do about a run that such faults have ended.
QString adviceOn(FaultKind kind);

// Of a reply that is no answer.
Fault faultOf(const HttpReply& reply, const QDateTime& now);

// Of an answer that holds nothing to be read: `person` finds the question whether a person is
// asking in its text, `words` tell what else it is.
Fault faultOfText(const QString& text, const QRegularExpression& person, const QString& words);

}  // namespace guanchao
