#include "exchange/board_import.h"

#include <utility>

#include "base/time_left.h"
#include "base/values.h"
#include "exchange/theme_text.h"
#include "services/polite_http.h"
#include "services/service_names.h"
#include "store/patient_worker.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostFailuresInARow = 10;
constexpr int mostRests = 3;

}  // namespace

BoardImport::BoardImport(const Stores& stores, const Clock& clock, HttpClient& http,
                         RunControl& control, Watch watch, Wait wait)
    : stores_(stores),
      clock_(clock),
      date_(timeText(clock.now())),
      control_(control),
      watch_(std::move(watch)),
      wait_(std::move(wait)),
      boards_(http, {}) {}

QCoro::Task<BoardTally> BoardImport::run(Service service, QList<Board> boards, std::stop_token stop,
                                         NewAttention attention) {
    const std::stop_callback whenStopped(stop, [this] { control_.stop(); });
    total_ = static_cast<int>(boards.size());
    attention_ = attention;
    tally_.isShown = attention == NewAttention::ofTheme;
    working_.goOn();
    RunNote note(u"导入概念板块"_s, stop);
    try {
        co_await carryOut(service, boards, stop);
    } catch (const Cancelled&) {
        tally_.stopped = true;
    }
    endIfStopped(stop);
    noteEnd(note);
    co_return BoardTally(tally_);
}

void BoardImport::noteEnd(RunNote& note) const {
    const QString counts =
        u"%1 / %2 个板块，%3 个失败"_s.arg(done_).arg(total_).arg(tally_.failed.size());
    if (!tally_.failed.isEmpty()) {
        note.failed(tally_.failed.last().why, counts);
    }
    if (tally_.failed.isEmpty() || tally_.stopped) {
        note.ended(counts, tally_.stopped);
    }
}

QCoro::Task<> BoardImport::carryOut(Service service, QList<Board> boards, std::stop_token stop) {
    for (const Board& board : boards) {
        co_await takePause();
        endIfStopped(control_.asking());
        show(u"正在导入 "_s + board.name);
        if (watch_.isWanted(board)) {
            co_await take(service, board, stop);
        }
        ++done_;
        if (!tally_.ending.isEmpty()) {
            co_return;
        }
    }
}

QCoro::Task<> BoardImport::takePause() {
    if (!control_.isPaused()) {
        co_return;
    }
    working_.rest();
    show(pausedStep);
    co_await control_.untilItGoesOn();
    working_.goOn();
}

QCoro::Task<> BoardImport::take(Service service, Board board, std::stop_token stop) {
    const QString theme = trimBlanks(board.name);
    if (!canNameTheme(theme)) {
        tally_.nameless << board.name;
        watch_.settled({board.node, {}, u"名称不能作主题名"_s});
        co_return;
    }
    const Reply reply = co_await ask(service, board);
    if (!reply.rows) {
        fail(board, reply);
        co_return;
    }
    failuresInARow_ = 0;
    const StoredBoard stored = co_await store(theme, *reply.rows, stop);
    ++tally_.boards;
    tally_.themes += stored.isNewTheme ? 1 : 0;
    tally_.members += stored.added;
    tally_.strangers += stored.strangers;
    watch_.settled({board.node, stored, {}});
}

// A service that has had enough of us, or fails time and again, is left alone for a while and then
// asked again.
QCoro::Task<BoardImport::Reply> BoardImport::ask(Service service, Board board) {
    for (int rests = 0;; ++rests) {
        Reply reply = co_await boards_.stocks(service, board, control_.asking());
        if (reply.restsFor.isEmpty() || rests == mostRests) {
            co_return reply;
        }
        show(u"%1：%2，%3"_s.arg(serviceName(service), reply.restsFor, triedAgainWords(clock_)));
        co_await wait_(longerThanARest, control_.asking());
        show(u"正在导入 "_s + board.name);
    }
}

void BoardImport::fail(const Board& board, const Reply& reply) {
    tally_.failed << BoardTally::Failed{board.name, reply.lack};
    ++failuresInARow_;
    if (!reply.restsFor.isEmpty() || failuresInARow_ == mostFailuresInARow) {
        tally_.ending = u"网站一再不答，最后一次："_s + reply.lack;
    }
    watch_.settled({board.node, {}, reply.lack});
}

// Another program, or a scan, may hold the store for a while.
QCoro::Task<StoredBoard> BoardImport::store(QString theme, QList<ListedStock> stocks,
                                            std::stop_token stop) {
    const auto job = [stores = stores_, theme, stocks, date = date_,
                      attention = attention_](const auto&) {
        return storeBoard(stores, theme, stocks, date, attention);
    };
    const StoredBoard stored = co_await inWorkerOnceFree(job, wait_, control_, stop);
    co_return StoredBoard(stored);
}

void BoardImport::show(const QString& step) {
    watch_.progress({step, done_, total_, timeLeftWords(working_.elapsed(), done_, total_)});
}

}  // namespace guanchao
