#include "collector/fault.h"

#include <algorithm>

#include "services/polite_http.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

FaultKind kindOf(HttpReply::Outcome outcome) {
    switch (outcome) {
        case HttpReply::Outcome::refused:
            return FaultKind::refused;
        case HttpReply::Outcome::silent:
            return FaultKind::silent;
        case HttpReply::Outcome::limited:
        case HttpReply::Outcome::resting:
            return FaultKind::limited;
        default:
            return FaultKind::unreachable;
    }
}

}  // namespace

QString faultName(FaultKind kind) {
    switch (kind) {
        case FaultKind::unreachable:
            return u"连接不上"_s;
        case FaultKind::refused:
            return u"被拒绝"_s;
        case FaultKind::limited:
            return u"被限制"_s;
        case FaultKind::silent:
            return u"没有应答"_s;
        case FaultKind::unreadable:
            return u"读不出"_s;
        case FaultKind::notWritten:
            return u"没有写入"_s;
    }
    return {};
}

Fault faultOf(const HttpReply& reply, const QDateTime& now) {
    const qint64 longest = std::chrono::milliseconds(longerThanARest).count();
    const qint64 rest = reply.until.isValid() ? now.msecsTo(reply.until) : 0;
    return {kindOf(reply.outcome), u"网页没有读到："_s + failureWords(reply),
            std::chrono::milliseconds(std::clamp<qint64>(rest, 0, longest))};
}

Fault faultOfText(const QString& text, const QRegularExpression& person, const QString& words) {
    if (!person.pattern().isEmpty() && person.match(text).hasMatch()) {
        return {FaultKind::limited, u"网站要人验证（验证码）"_s};
    }
    return {FaultKind::unreadable, words};
}

}  // namespace guanchao
