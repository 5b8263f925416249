// The words of a run.
#include "collector/collection.h"

#include <QUrl>
#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString secondsWords(std::chrono::milliseconds time) {
    return u"%1 秒"_s.arg(std::chrono::ceil<std::chrono::seconds>(time).count());
}

// Several services may stand on one machine.
QString hostWords(const QString& address) {
    const QUrl url(address);
    return url.port() < 0 ? url.host() : u"%1:%2"_s.arg(url.host()).arg(url.port());
}

}  // namespace

QString Collection::stateWords() const {
    switch (state_) {
        case RunState::running:
            return u"正在采集"_s;
        case RunState::paused:
            return u"已暂停"_s;
        case RunState::finished:
            return u"采集完成"_s;
        case RunState::nothingRead:
            return u"没有采集到数据"_s;
        case RunState::stopped:
            return u"采集已停止"_s;
        case RunState::unwanted:
            return u"主程序已退出，采集结束"_s;
        case RunState::hopeless:
            return u"接连没有读到网页，采集提前结束（%1），%2"_s.arg(lastFault_.words,
                                                                     adviceOn(lastFault_.kind));
        case RunState::storeRefuses:
            return u"采集库接连不能写入，采集提前结束：%1"_s.arg(lastRefusal_);
    }
    return {};
}

QString Collection::summary() const {
    if (items_.isEmpty()) {
        return u"没有要采集的项目：没有一项的关注度大于设定值。"_s;
    }
    if (tally_.before == tally_.items) {
        return u"今天的 %1 项都已采集过。"_s.arg(tally_.items);
    }
    return stateWords() + u'：' + countWords() + u'。';
}

QString Collection::countWords() const {
    const bool leftSome = hasEnded() && tally_.left() > 0;
    return tally_.countWords() + (leftSome ? u"，没有采集 %1 项"_s.arg(tally_.left()) : QString());
}

QString Collection::waitWords() const {
    QStringList words;
    for (const Lane& lane : lanes_) {
        const QString host = lanes_.size() > 1 ? hostWords(lane.host) + u'：' : QString();
        if (!hasEnded()) {
            words << host + waitWordsOf(lane);
        }
    }
    return words.join(u'\n');
}

QString Collection::waitWordsOf(const Lane& lane) const {
    const std::chrono::milliseconds now = clock_.uptime();
    if (lane.isClosed) {
        return u"不再去要（%1）"_s.arg(lane.lastFault);
    }
    if (lane.isAsking) {
        return u"正在读网页（%1）"_s.arg(nameOf(*lane.current));
    }
    if (state_ == RunState::paused) {
        return u"已暂停"_s;
    }
    if (lane.rests > 0) {
        return u"%1，%2后再试"_s.arg(lane.lastFault, secondsWords(untilTurnOf(lane)));
    }
    if (lane.current || lane.due > now) {
        return u"%1后读下一页"_s.arg(secondsWords(untilTurnOf(lane)));
    }
    const std::optional<Pending> next = queue_.nextDue(lane.ways);
    return next ? u"%1后重试：%2"_s.arg(secondsWords(untilTurnOf(lane)), nameOf(*next))
                : u"等其他网站"_s;
}

}  // namespace guanchao
