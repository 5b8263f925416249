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

QString checkWords(const CheckRow& row) {
    const QString what = row.check.what.isEmpty() ? QString() : row.check.what + u' ';
    if (row.service.host.isEmpty()) {
        return what + u"没有网址"_s;
    }
    return what + u"%1，%2 毫秒：%3"_s.arg(row.finding.answers ? u"通"_s : u"不通"_s)
                      .arg(row.milliseconds)
                      .arg(row.finding.words);
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

void CheckWords::add(const QList<ServiceEntry>& entries, const CheckRow& row) {
    const bool isAsked = !row.service.host.isEmpty();
    const bool hasFailed = isAsked && !row.finding.answers;
    for (const ServiceEntry& it : entries) {
        words_[serviceKey(it)] << checkWords(row);
        if (hasFailed) {
            failed_ << serviceKey(it);
        }
    }
    answers_ += isAsked && row.finding.answers ? 1 : 0;
    failures_ += hasFailed ? 1 : 0;
}

// A failed one is told by its sign too, which no colour hides.
QString CheckWords::of(const ServiceEntry& entry) const {
    return (hasFailed(entry) ? u"× "_s : QString()) + words_.value(serviceKey(entry)).join(u'；');
}

QString CheckWords::sum() const {
    return u"通 %1，不通 %2"_s.arg(answers_).arg(failures_);
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
