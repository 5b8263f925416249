// The quotes in Form30: the interval at which they are asked for, and how old they are.
#include <QSettings>

#include "base/time_left.h"
#include "themes/form30.h"
#include "ui_form30.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int choices[] = {0, 5, 10, 30};  // seconds; 0: off
constexpr std::chrono::seconds betweenAges(5);

QString keptInterval() {
    return u"自选股/自动更新"_s;
}

}  // namespace

void Form30::setUpQuotes() {
    feed_.alsoNote(environment_.polledDay);
    QComboBox& box = *ui_->interval;
    for (const int seconds : choices) {
        box.addItem(seconds == 0 ? u"关闭"_s : u"每%1秒"_s.arg(seconds), seconds);
    }
    const QString ini = environment_.interfaceIniPath();
    const int kept = QSettings(ini, QSettings::IniFormat).value(keptInterval(), 0).toInt();
    box.setCurrentIndex(std::max(box.findData(kept), 0));
    connect(&box, &QComboBox::currentIndexChanged, this, [this, ini] {
        QSettings(ini, QSettings::IniFormat).setValue(keptInterval(), ui_->interval->currentData());
        follow();
    });
    // The controls beside it stay where they are.
    ui_->age->setMinimumWidth(fontMetrics().horizontalAdvance(u"行情：59 分钟前"_s));
    connect(&ages_, &QTimer::timeout, this, &Form30::showAge);
    ages_.start(betweenAges);
    showAge();
    follow();
}

void Form30::setSecond(std::chrono::milliseconds second) {
    second_ = second;
    follow();
}

void Form30::follow() {
    quoteRuns_.stop();
    const int seconds = ui_->interval->currentData().toInt();
    if (seconds > 0) {
        quoteRuns_.start([=, this](std::stop_token stop) {
            return quotes_.follow(
                seconds * second_, [this] { return list_; },
                [this](const QString& lack) { showCame(lack); }, stop);
        });
    }
}

// What is lacking goes with the next answer that lacks nothing; other words stay.
void Form30::showCame(const QString& lack) {
    if (!lack.isEmpty() || lacks_) {
        say(lack.isEmpty() ? lack : u"自动更新："_s + lack);
        lacks_ = !lack.isEmpty();
    }
    refresh();
}

// Of the newest quote of the list.
void Form30::showAge() {
    QString newest;
    for (const int row : allRows()) {
        const QString time = grid_.textMatrix(row, WatchColumn::time);
        newest = time.startsWith(u'2') ? std::max(newest, time) : newest;
    }
    const QDateTime at = QDateTime::fromString(newest, u"yyyy-MM-dd HH:mm:ss"_s);
    const qint64 age = at.secsTo(environment_.clock.now());
    ui_->age->setText(at.isValid() && age >= 0 ? u"行情："_s + ageWords(age) : QString());
    ui_->age->setToolTip(newest);
}

}  // namespace guanchao
