#include "market/readings.h"

#include <QScopeGuard>
#include <utility>
#include <vector>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void Readings::begin() {
    if (underWay_++ == 0) {
        messages_.clear();
        failure_.reset();
    }
}

void Readings::end() {
    if (--underWay_ == 0) {
        finish();
    }
}

void Readings::say(const QString& message) {
    if (!message.isEmpty() && !messages_.contains(message)) {
        messages_ << message;
    }
}

void Readings::finish() {
    ended_();
    const QStringList messages = std::exchange(messages_, {});
    if (const std::optional<OperationError> failure = std::exchange(failure_, std::nullopt)) {
        failures_.report(*failure);
        return;
    }
    for (const QString& message : messages) {
        dialogs_.tell(message);
    }
}

QCoro::Task<> Readings::takeAll(QList<Reading> readings, std::function<void(bool)> loading,
                                std::stop_token stop) {
    {
        ++underWay_;
        loading(true);
        const auto ended = qScopeGuard([&] {
            --underWay_;
            loading(false);
        });
        std::vector<QCoro::Task<Lack>> onTheirWay;
        for (const Reading& reading : readings) {
            onTheirWay.push_back(attempt(reading, stop));
        }
        for (QCoro::Task<Lack>& it : onTheirWay) {
            const Lack lack = co_await std::move(it);
            say(lack.message);
            if (!failure_) {
                failure_ = lack.failure;
            }
        }
    }
    if (underWay_ == 0) {
        finish();
    }
}

QCoro::Task<> Readings::takeQuietly(Reading reading, std::stop_token stop) {
    co_await attempt(reading, stop);
}

QCoro::Task<Readings::Lack> Readings::attempt(Reading reading, std::stop_token stop) {
    Lack lack;
    try {
        co_await reading.job(stop);
    } catch (const NotHad& it) {
        lack = {u"没有读到%1（%2）"_s.arg(reading.what, it.words), it.message, std::nullopt};
    } catch (const OperationError& failure) {
        lack = {failure.reason(), {}, failure};
    }
    if (lack.words.isEmpty()) {
        lacks_.remove(reading.what);
    } else {
        lacks_[reading.what] = lack.words;
    }
    co_return lack;
}

QString Readings::lackWords(const QString& first) const {
    const QString any = lacks_.isEmpty() ? QString() : lacks_.first();
    return lacks_.value(first, any);
}

}  // namespace guanchao
