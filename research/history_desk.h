// The one fill of the history databases that may go on, behind all windows, and the update of each
// day, which begins by itself after the close if the user wants it. The choices are kept in
// 界面.ini of the application folder. The program owns one, which outlives the windows.
#pragma once

#include <QObject>
#include <memory>

#include "base/runs.h"
#include "platform/daily_looks.h"
#include "research/history_fill.h"
#include "services/service_watch.h"

namespace guanchao {

struct ShownFill : ShownRun {
    RunProgress progress;
    QString words;  // what the last one came to; empty before its end
};

class HistoryDesk : public QObject {
    Q_OBJECT

public:
    HistoryDesk(const Stores& stores, const Clock& clock, ServiceWatch& watch,
                const Services& services, Failures& failures, QString iniPath);

    // Once the stores are known: looks each minute whether the update of the day is due.
    void start();

    void fill();
    void pause();
    void goOn();
    // What has been read is stored first.
    void stop();
    // For the end of the program: the same, and waits for it.
    QCoro::Task<> end(std::stop_token stop);

    const ShownFill& shown() const { return shown_; }
    // Of the services that are asked, a line each, in Chinese.
    QStringList serviceLines() const;

    static constexpr int mostYears = 35;
    int years() const;
    void setYears(int years);
    bool updatesByItself() const;
    void setUpdatesByItself(bool wanted);

signals:
    void changed();
    // The databases hold what they will for now.
    void settled();

private:
    void look();
    void begin(FillWish wish);
    QCoro::Task<> run(FillWish wish, std::stop_token stop);
    void noteUpdate(const FillTally& tally);

    const Stores& stores_;
    const Clock& clock_;
    ServiceWatch& watch_;
    const Services& services_;
    QString iniPath_;
    ShownFill shown_;
    QDate updated_;  // the day whose close is there
    DailyLooks looks_;
    std::unique_ptr<RunControl> control_;
    std::shared_ptr<Later<bool>> ended_;
    Runs runs_;
};

}  // namespace guanchao
