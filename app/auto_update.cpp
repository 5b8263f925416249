#include "app/auto_update.h"

#include <QSettings>
#include <algorithm>
#include <chrono>
#include <iterator>

#include "frame/choice_menu.h"
#include "market/trading_session.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int choices[] = {0, 10, 30, 60};  // seconds; 0: off

QString choiceWords(int seconds) {
    return seconds == 0 ? u"关闭"_s : u"每%1秒"_s.arg(seconds);
}

QString key() {
    return u"行情/自动更新"_s;
}

}  // namespace

AutoUpdate::AutoUpdate(QMenu& menu, const QString& iniPath, const Clock& clock,
                       std::function<void()> update)
    : iniPath_(iniPath), clock_(clock), update_(std::move(update)) {
    timer_.setParent(this);
    timer_.setObjectName(u"autoUpdate"_s);
    connect(&timer_, &QTimer::timeout, this, &AutoUpdate::updateIfOpen);
    QMenu* entries = menu.addMenu(u"自动更新(交易时段内)"_s);
    QList<std::pair<QString, int>> named;
    for (const int seconds : choices) {
        named << std::pair(choiceWords(seconds), seconds);
    }
    const int chosen = QSettings(iniPath_, QSettings::IniFormat).value(key(), 0).toInt();
    addChoices<int>(*entries, named, chosen, [this](int seconds) {
        QSettings(iniPath_, QSettings::IniFormat).setValue(key(), seconds);
        choose(seconds);
    });
    if (std::ranges::find(choices, chosen) != std::end(choices)) {
        choose(chosen);
    }
}

void AutoUpdate::choose(int seconds) {
    if (seconds > 0) {
        timer_.start(std::chrono::seconds(seconds));
    } else {
        timer_.stop();
    }
}

void AutoUpdate::updateIfOpen() {
    if (inTradingSession(clock_.now())) {
        update_();
    }
}

}  // namespace guanchao
