#include "app/auto_update.h"

#include <QActionGroup>
#include <QSettings>
#include <chrono>

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
    auto* group = new QActionGroup(entries);
    const int chosen = QSettings(iniPath_, QSettings::IniFormat).value(key(), 0).toInt();
    for (const int seconds : choices) {
        QAction* entry = entries->addAction(choiceWords(seconds));
        entry->setCheckable(true);
        entry->setChecked(seconds == chosen);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, seconds] {
            QSettings(iniPath_, QSettings::IniFormat).setValue(key(), seconds);
            choose(seconds);
        });
        if (seconds == chosen) {
            choose(seconds);
        }
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
