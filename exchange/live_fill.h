// 实盘: fills a new folder from the public services: the code table by the list of all stocks, then
// a theme for each concept board. What has come is stored: a stop, a failure or a kill costs what
// has not come yet, and a further run asks for that alone. One object is one run.
#pragma once

#include <functional>
#include <optional>

#include "exchange/board_import.h"
#include "exchange/code_table_update.h"
#include "services/services.h"

namespace guanchao {

struct LiveFillWish {
    bool codes = true;
    bool withBeijing = false;
    bool themes = true;
};

struct LiveFillResult {
    std::optional<CodeTableResult> codes;  // nothing where they were not asked for
    std::optional<BoardTally> themes;      // the same, and where there is no list of boards
    QStringList boardLacks;                // why there is none
    int whole = 0;                         // boards whose themes had all their stocks already
    bool stopped = false;                  // by the user

    bool hasCodes() const { return codes && codes->hasList && !codes->stopped; }
    bool hasThemes() const;
    // What came, what didn't, why and what to do, in Chinese.
    QString words() const;
};

class LiveFill {
public:
    // Called as the run goes on, in the thread that shows.
    struct Watch {
        std::function<void(const RunProgress&)> progress;  // in stocks, then in boards
        std::function<void()> stored;                      // something has come into the store
    };

    // `initialsPath` is the list of exceptions that the initials have.
    LiveFill(const Stores& stores, const Clock& clock, HttpClient& http, const Services& services,
             QString initialsPath, RunControl& control, Watch watch, Wait wait = pause);

    // To its end, or until the control stops it. Raises StoreError.
    QCoro::Task<LiveFillResult> run(LiveFillWish wish, std::stop_token stop);

private:
    QCoro::Task<> fillCodes(bool withBeijing, std::stop_token stop);
    QCoro::Task<> fillThemes(std::stop_token stop);
    QCoro::Task<BoardList> listBoards();
    QCoro::Task<QList<Board>> missingOf(QList<Board> boards, std::stop_token stop);
    void show(const QString& part, RunProgress progress);

    Stores stores_;
    const Clock& clock_;
    HttpClient& http_;
    QList<Service> lists_;
    QList<Service> boards_;
    QString initialsPath_;
    RunControl& control_;
    Watch watch_;
    Wait wait_;
    LiveFillResult result_;
};

}  // namespace guanchao
