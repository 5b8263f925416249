// What keeps the alarms going whatever stands on the screen: the tick of every second, which polls
// when that is due, and the sound that an alarm asked for.
#pragma once

#include <QObject>
#include <QTimer>

#include "monitor/alarm_engine.h"
#include "platform/sound.h"

namespace guanchao {

class AlarmDesk : public QObject {
    Q_OBJECT

public:
    // `showMonitors` as the engine wants it.
    AlarmDesk(const Stores& stores, const Globals& globals, const Clock& clock, QuoteFeed& feed,
              Failures& failures, Sound& sound, std::function<bool()> showMonitors);
    ~AlarmDesk() override;

    // The ticks begin; they go on for the life of the process.
    void start() { Timer2_.start(); }
    // 停止播放
    void stopSound() { sound_.stop(); }

signals:
    // A second has passed; the engine's own tick follows.
    void ticks();
    void soundBegins(const QString& file);
    void soundEnds();

private:
    void Timer2_Timer();
    void Timer3_Timer();
    void ringLater(const QString& file);

    Sound& sound_;
    AlarmEngine engine_;
    QTimer Timer2_;          // every second
    QTimer Timer3_;          // once per alarm sound
    QString bofangwenjian_;  // 播放文件: the sound that Timer3 is to play
};

}  // namespace guanchao
