// What keeps the alarms going whatever stands on the screen: the tick of every second, which polls
// when that is due, and the sound that an alarm asked for.
#pragma once

#include <QObject>
#include <QTimer>

#include "base/globals.h"
#include "monitor/alarm_engine.h"
#include "platform/sound.h"

namespace guanchao {

class AlarmDesk : public QObject, private AlarmScreen {
    Q_OBJECT

public:
    // `showMonitors` shows the monitor window, or answers false where it may not now.
    AlarmDesk(const Stores& stores, Globals& globals, const Clock& clock, QuoteFeed& feed,
              Failures& failures, Sound& sound, std::function<bool()> showMonitors);
    ~AlarmDesk() override;

    // The ticks begin; they go on for the life of the process.
    void start() { Timer2_.start(); }
    // 停止播放
    void stopSound();
    // Those that have fired and were not looked at.
    const QList<FiredMonitor>& unseen() const { return unseen_; }
    void forget(const FiredMonitor& monitor);
    // Since when the polls bring no quotes, for the windows; empty while they do.
    QString staleWords() const;

signals:
    // A second has passed; the engine's own tick follows.
    void ticks();
    void soundBegins(const QString& file);
    void soundEnds();
    // By 停止播放: the user has heard it.
    void silenced();
    void fired(const FiredMonitor& monitor);
    // Monitoring goes by the session or a hand, quotes come or don't.
    void stateChanged();

private:
    void tell(const FiredMonitor& monitor) override;
    bool showMonitors() override { return showMonitors_(); }
    void ring(const QString& file) override;
    void showStale(const QDateTime& since) override;

    void Timer2_Timer();
    void Timer3_Timer();

    Globals& globals_;
    const Clock& clock_;
    Sound& sound_;
    std::function<bool()> showMonitors_;
    QList<FiredMonitor> unseen_;
    QDateTime staleSince_;
    qint16 shownFlag_ = 0;
    AlarmEngine engine_;
    QTimer Timer2_;          // every second
    QTimer Timer3_;          // once per alarm sound
    QString bofangwenjian_;  // 播放文件: the sound that Timer3 is to play
};

}  // namespace guanchao
