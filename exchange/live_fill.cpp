#include "exchange/live_fill.h"

#include <utility>

#include "base/values.h"
#include "base/worker.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString codesPart = u"代码表："_s;
const QString themesPart = u"主题："_s;
const QString again = u"过一会儿再点“开始”，只补没有读到的"_s;

QString themeWords(const LiveFillResult& result) {
    if (result.themes) {
        QStringList lines;
        if (!result.themes->isNothing()) {
            lines << result.themes->words(adviceOn({}, again));
        }
        if (result.whole > 0) {
            lines << u"%1 个板块的主题已经齐了，没有再读。"_s.arg(result.whole);
        }
        return themesPart + lines.join(u'\n');
    }
    return themesPart + u"没有读到板块列表，主题没有改变：\n"_s + result.boardLacks.join(u'\n') +
           u'\n' + adviceOn(result.boardLacks, again);
}

}  // namespace

bool LiveFillResult::hasThemes() const {
    return themes && !themes->stopped && themes->ending.isEmpty() && themes->failed.isEmpty();
}

QString LiveFillResult::words() const {
    QStringList lines;
    if (codes) {
        lines << codesPart + codes->words();
    }
    if (themes || !boardLacks.isEmpty()) {
        lines << themeWords(*this);
    }
    if (stopped) {
        lines << (themes ? u"再点“开始”只补没有读到的。"_s
                  : hasCodes() ? u"已经读到的都保留着，再点“开始”只补没有读到的。"_s
                               : u"再点“开始”从头来。"_s);
    } else if (!codes || hasCodes()) {
        lines << u"接下来关闭这个窗口，按 F9 更新行情。"_s;
    }
    return lines.join(u'\n');
}

LiveFill::LiveFill(const Stores& stores, const Clock& clock, HttpClient& http,
                   const Services& services, QString initialsPath, RunControl& control, Watch watch,
                   Wait wait)
    : stores_(stores),
      clock_(clock),
      http_(http),
      lists_(services.stockList),
      boards_(services.boards),
      initialsPath_(std::move(initialsPath)),
      control_(control),
      watch_(std::move(watch)),
      wait_(std::move(wait)) {}

QCoro::Task<LiveFillResult> LiveFill::run(LiveFillWish wish, std::stop_token stop) {
    const std::stop_callback whenStopped(stop, [this] { control_.stop(); });
    if (wish.codes) {
        co_await fillCodes(wish.withBeijing, stop);
    }
    if (wish.themes && !control_.isStopped()) {
        co_await fillThemes(stop);
    }
    endIfStopped(stop);
    result_.stopped = control_.isStopped();
    co_return LiveFillResult(result_);
}

QCoro::Task<> LiveFill::fillCodes(bool withBeijing, std::stop_token stop) {
    CodeTableUpdate update(stores_, clock_, http_, lists_, initialsPath_, control_,
                           [this](const RunProgress& it) { show(codesPart, it); });
    const CodeTableResult codes = co_await update.run(withBeijing, stop);
    result_.codes = codes;
    if (!result_.codes->changes.isEmpty()) {
        watch_.stored();
    }
}

QCoro::Task<> LiveFill::fillThemes(std::stop_token stop) {
    show(themesPart, {u"正在读板块列表…"_s, 0, 0, {}});
    const BoardList list = co_await listBoards();
    endIfStopped(stop);
    result_.boardLacks = list.boards.isEmpty() ? list.lacks : QStringList();
    if (list.boards.isEmpty()) {
        co_return;
    }
    const QList<Board> missing = co_await missingOf(list.boards, stop);
    result_.whole = static_cast<int>(list.boards.size() - missing.size());
    BoardImport run(
        stores_, clock_, http_, control_,
        {[](const Board&) { return true; }, [this](const RunProgress& it) { show(themesPart, it); },
         [this](const BoardOutcome& it) {
             if (it.stored.added > 0) {
                 watch_.stored();
             }
         }},
        wait_);
    const BoardTally tally = co_await run.run(list.service, missing, stop, NewAttention::ofTheme);
    result_.themes = tally;
}

// None where the user stops meanwhile.
QCoro::Task<BoardList> LiveFill::listBoards() {
    const Boards boards(http_, boards_);
    try {
        BoardList list = co_await boards.list(BoardSort::concepts, control_.asking());
        co_return list;
    } catch (const Cancelled&) {
        co_return BoardList();
    }
}

// Those whose themes lack stocks. Where the service doesn't tell how many a board has, all.
QCoro::Task<QList<Board>> LiveFill::missingOf(QList<Board> boards, std::stop_token stop) {
    const auto job = [stores = stores_](const auto&) { return membersOfThemes(stores); };
    const QHash<QString, int> members = co_await inWorker(job, stop);
    boards.removeIf([&members](const Board& it) {
        return it.stocks && members.value(trimBlanks(it.name)) >= *it.stocks;
    });
    co_return boards;
}

void LiveFill::show(const QString& part, RunProgress progress) {
    progress.step.prepend(part);
    watch_.progress(progress);
}

}  // namespace guanchao
