#include "utilities/service_table.h"

#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;

QString sinceThen(qint64 seconds) {
    if (seconds < minute) {
        return u"%1 秒前"_s.arg(std::max<qint64>(seconds, 0));
    }
    return seconds < hour ? u"%1 分钟前"_s.arg(seconds / minute)
                          : u"%1 小时前"_s.arg(seconds / hour);
}

}  // namespace

QString serviceKey(const ServiceEntry& entry) {
    return entry.purpose + u' ' + entry.service.kind + u' ' + entry.service.host;
}

QString ageWords(const QDateTime& when, const QDateTime& now) {
    if (!when.isValid()) {
        return {};
    }
    return when.date() == now.date()
               ? u"%1（%2）"_s.arg(when.toString(u"hh:mm:ss"_s), sinceThen(when.secsTo(now)))
               : when.toString(u"MM-dd hh:mm:ss"_s);
}

QString failureLine(const ServiceWatch::State& state, const QDateTime& now) {
    return state.failed.isValid() ? ageWords(state.failed, now) + u' ' + state.reason : QString();
}

void CheckWords::add(const ServiceEntry& entry, const CheckRow& row) {
    const QString what = row.check.what.isEmpty() ? QString() : row.check.what + u' ';
    words_[serviceKey(entry)] << (row.service.host.isEmpty()
                                      ? what + u"没有网址"_s
                                      : what + u"%1，%2 毫秒：%3"_s
                                                   .arg(row.finding.answers ? u"通"_s : u"不通"_s)
                                                   .arg(row.milliseconds)
                                                   .arg(row.finding.words));
}

QString CheckWords::of(const ServiceEntry& entry) const {
    return words_.value(serviceKey(entry)).join(u'；');
}

QList<ServiceEntry> entriesOf(const QList<ServiceEntry>& entries, const Check& check,
                              const Service& service) {
    QList<ServiceEntry> found;
    std::ranges::copy_if(entries, std::back_inserter(found), [&](const ServiceEntry& it) {
        const bool isSame = it.service.kind == service.kind && it.service.host == service.host;
        return it.purpose == check.purpose && it.isUsed && (isSame || !hasOrder(it.purpose));
    });
    return found;
}

}  // namespace guanchao
