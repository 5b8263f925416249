// 导入概念板块: the stocks of boards (板块) become members of themes. One board after the other is
// asked for at the pace of its service, and stored as it comes: a stop, a failure or a kill costs
// the boards that have not come yet. One object is one run.
#pragma once

#include <chrono>
#include <functional>

#include "base/pause.h"
#include "base/run_control.h"
#include "base/run_note.h"
#include "base/run_progress.h"
#include "exchange/board_store.h"
#include "exchange/board_tally.h"
#include "platform/clock.h"
#include "services/boards.h"

namespace guanchao {

// The step of a run that waits for the user to go on.
inline const QString pausedStep = QStringLiteral("已暂停");

// What became of a board.
struct BoardOutcome {
    QString node;
    StoredBoard stored;
    QString lack;  // why it isn't stored, in Chinese
};

class BoardImport {
public:
    // Called as the run goes on, in the thread that shows.
    struct Watch {
        std::function<bool(const Board&)> isWanted;        // still, when its turn has come
        std::function<void(const RunProgress&)> progress;  // in boards
        std::function<void(const BoardOutcome&)> settled;
    };

    BoardImport(const Stores& stores, const Clock& clock, HttpClient& http, RunControl& control,
                Watch watch, Wait wait = pause);

    // Of a list that this service has told. To its end, or until the control stops it; ends too
    // where the service fails time and again: the tally tells why. Raises StoreError.
    QCoro::Task<BoardTally> run(Service service, QList<Board> boards, std::stop_token stop,
                                NewAttention attention = NewAttention::none);

private:
    using Reply = ListReply<ListedStock>;

    QCoro::Task<> carryOut(Service service, QList<Board> boards, std::stop_token stop);
    QCoro::Task<> takePause();
    QCoro::Task<> take(Service service, Board board, std::stop_token stop);
    QCoro::Task<Reply> ask(Service service, Board board);
    QCoro::Task<StoredBoard> store(QString theme, QList<ListedStock> stocks, std::stop_token stop);
    void fail(const Board& board, const Reply& reply);
    void noteEnd(RunNote& note) const;
    void show(const QString& step);

    Stores stores_;
    const Clock& clock_;
    QString date_;
    RunControl& control_;
    Watch watch_;
    Wait wait_;
    Boards boards_;

    NewAttention attention_ = NewAttention::none;
    BoardTally tally_;
    int done_ = 0;
    int total_ = 0;
    int failuresInARow_ = 0;
    WorkTime working_;
};

}  // namespace guanchao
