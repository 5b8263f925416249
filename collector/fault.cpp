#include "collector/fault.h"

#include <algorithm>

#include "services/polite_http.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

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

QString adviceOn(FaultKind kind) {
    switch (kind) {
        case FaultKind::limited:
            return u"请过一两个小时再采集；网站要人验证的，先在浏览器里通过验证"_s;
        case FaultKind::refused:
            return u"请在浏览器里打开搜索网址看看，或在“行情来源”里换一个网站"_s;
        case FaultKind::unreadable:
            return u"请在浏览器里打开搜索网址，看它是不是改了样子"_s;
        case FaultKind::notWritten:
            return u"请看看采集库，改好后再采集"_s;
        case FaultKind::unreachable:
        case FaultKind::silent:
            break;
    }
    return u"请检查网络和搜索网址，过一会儿再采集"_s;
}

Fault faultOf(const HttpReply& reply, const QDateTime& now) {
    const QString words = u"网页没有读到："_s + failureWords(reply);
    const std::chrono::milliseconds longest = longerThanARest;
    if (reply.outcome == HttpReply::Outcome::resting) {
        const std::chrono::milliseconds left(now.msecsTo(reply.until));
        return {FaultKind::limited, words, std::clamp(left, 0ms, longest)};
    }
    const bool isLimited = reply.outcome == HttpReply::Outcome::limited;
    return {kindOf(reply.outcome), words, isLimited ? longest : 0ms};
}

Fault faultOfText(const QString& text, const QRegularExpression& person, const QString& words) {
    if (!person.pattern().isEmpty() && person.match(text).hasMatch()) {
        return {FaultKind::limited, u"网站要人验证（验证码）"_s};
    }
    return {FaultKind::unreadable, words};
}

}  // namespace guanchao
