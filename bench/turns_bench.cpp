// The longest time in which the event loop did not turn while the program works, with its windows,
// on the whole market: beside the 100 ms that a user doesn't notice.
#include <QElapsedTimer>
#include <QFile>
#include <memory>
#include <stdexcept>

#include "app/form2.h"
#include "articles/form26.h"
#include "articles/form27.h"
#include "base/values.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "exchange/form3.h"
#include "exchange/form33.h"
#include "exchange/form35.h"
#include "exchange/form_restore.h"
#include "exchange/start_page.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "heat/form5.h"
#include "market/form11.h"
#include "market/form21.h"
#include "market/form36.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "platform/qt_http_client.h"
#include "research/form12.h"
#include "research/form24.h"
#include "research/form32.h"
#include "research/form37.h"
#include "tests/support/raw_service.h"
#include "tests/support/window_test.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form38.h"
#include "themes/form6.h"
#include "themes/review_window.h"
#include "themes/theme_page.h"
#include "tools/market_scale/history_scale.h"
#include "tools/practice_market/practice_market.h"
#include "utilities/diagnosis_window.h"
#include "utilities/form28.h"
#include "utilities/form34.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double noticed = 100;
constexpr std::chrono::milliseconds betweenTurns(5);
constexpr int patience = 120'000;
constexpr int polled = 50;
constexpr int pollsWatched = 20;
constexpr int scanned = 5'000;

void waitFor(const std::function<bool()>& condition) {
    if (!QTest::qWaitFor(condition, patience)) {
        throw std::runtime_error("it took too long");
    }
}

class Turns {
public:
    Turns() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { note(); });
        timer_.start(betweenTurns);
        since_.start();
    }

    // In milliseconds, with what has gone by since the last turn.
    double longest() {
        note();
        return static_cast<double>(longest_) / 1e6;
    }

private:
    void note() {
        longest_ = std::max(longest_, since_.nsecsElapsed());
        since_.restart();
    }

    QTimer timer_;
    QElapsedTimer since_;
    qint64 longest_ = 0;
};

// The fixture of windows serves without its test.
class Place : public WindowTest {
public:
    QString failure() const { return failures_.texts.join(u';'); }

private:
    void TestBody() override {}
};

// The main window over the whole market, on a disk, with a practice market that answers.
class Desk : public Place {
public:
    Desk() {
        // The other stores stand in memory.
        const QString onDisk = directory_.filePath(u"main"_s);
        QFile::copy(wholeMarket().main.path, onDisk);
        QFile::remove(stores_.main.path);
        QFile::link(onDisk, stores_.main.path);
        market_.start();
        services_.quote = {Service{market_.host(), {}, 0, 6}};
        http_.client = std::make_unique<QtHttpClient>();
        globals_.yingyongmulu = store_.folder();
        form_ = std::make_unique<Form2>(environment_, windows_, desktop_);
        form_->Form_Load();
        form_->show();
        find<QAction>(*form_, u"全部显示"_s)->trigger();
        processEvents();
    }

    template <typename Widget>
    static Widget* find(const QWidget& form, const QString& name) {
        return form.findChild<Widget*>(name);
    }
    static void processEvents() { QCoreApplication::processEvents(); }
    static void press(const QWidget& form, const QString& button) {
        find<QPushButton>(form, button)->click();
    }
    template <typename Form>
    const QWidget& open() {
        windows_.openAnew<Form>();
        return *shownWindow<Form>();
    }

    // The run begins and ends with the visibility of the widget.
    static double turnsWhile(const std::function<void()>& begin, const QWidget& shownMeanwhile) {
        Turns turns;
        begin();
        if (!shownMeanwhile.isVisible()) {
            throw std::runtime_error("it did not begin");
        }
        waitFor([&] { return !shownMeanwhile.isVisible(); });
        return turns.longest();
    }
    static double turnsFor(const std::function<void()>& begin, int milliseconds) {
        Turns turns;
        begin();
        QTest::qWait(milliseconds);
        return turns.longest();
    }

    double quotes() {
        return turnsWhile([this] { find<QAction>(*form_, u"gengxin"_s)->trigger(); },
                          *find<QPushButton>(*form_, u"stopRun"_s));
    }

    double polls() {
        Connection store = stores_.main.open();
        Transaction transaction(store);
        for (int at = 0; at < polled; ++at) {
            const QString dm = quoted(marketCode(at));
            store.execute(u"insert into jiankonghq(dm) values("_s + dm + u')');
            store.execute(u"insert into gegujiankong(dm,leixin,bijiaofu,baojinzhi) values("_s + dm +
                          u",'涨幅','>',90)"_s);
        }
        store.execute(u"update tempcanshu set jiankongpinlu=0"_s);
        transaction.commit();
        Turns turns;
        find<QTimer>(*form_, u"Timer1"_s)->setInterval(1);
        find<QTimer>(*form_, u"Timer2"_s)->setInterval(20);
        const qsizetype before = http_.paths.size();
        waitFor([&] { return http_.paths.size() > before + pollsWatched; });
        return turns.longest();
    }

    double exported() {
        dialogs_.typed = store_.folder();
        return turnsWhile([this] { find<QAction>(*form_, u"导出数据"_s)->trigger(); },
                          *find<QPushButton>(*form_, u"stopExchange"_s));
    }

    double libraryImported() {
        exported();
        stores_.main.open().execute(u"delete from dzhzhuti"_s);
        const QWidget& form = open<Form3>();
        find<QLineEdit>(form, u"Text1"_s)->setText(store_.folder() + u"zhutibackup.ztb"_s);
        return turnsWhile([&] { press(form, u"Command2"_s); },
                          *find<QPushButton>(form, u"stopRun"_s));
    }

    double scan() {
        makeHistoryScale(stores_.firstHistory, stores_.secondHistory, {}, true);
        const QWidget& form = open<Form12>();
        return turnsFor([&] { press(form, u"Command1"_s); }, scanned);
    }

private:
    static std::vector<PracticeStock> stocks() {
        std::vector<PracticeStock> stocks;
        for (int at = 0; at < MarketScale().stocks; ++at) {
            stocks.push_back({marketCode(at), u"股票"_s});
        }
        return stocks;
    }

    QTemporaryDir directory_;
    PracticeMarket market_{PracticeQuotes(stocks()), [moment = clock_.moment] { return moment; }};
    std::unique_ptr<Form2> form_;
};

// Each window in turn while every service accepts and never answers.
class DeadDesk : public Place {
public:
    DeadDesk() {
        stores_.main.path = wholeMarket().main.path;
        globals_.yingyongmulu = store_.folder();
        globals_.dangqiandm = marketCode(0);
        globals_.dangqianzhuti = marketTheme(0);
        for (Service* service :
             {&services_.chart, &services_.stockpage, &services_.newspage, &services_.vendor}) {
            *service = silent_.service();
        }
        services_.quote = services_.history = services_.factors = services_.fundamentals =
            services_.boards = services_.stockList = {silent_.service()};
        http_.client = std::make_unique<QtHttpClient>();
    }

    double openings() {
        Turns turns;
        open<Form3, Form4, Form5, Form6, Form7, Form8, Form11, Form12, Form21, Form22, Form24,
             Form25, Form26, Form27, Form28, Form29, Form30, Form31, Form32, Form33, Form34, Form35,
             Form36, Form37, Form38, ThemePage, ReviewWindow, FormRestore, StartPage,
             DiagnosisWindow>();
        return turns.longest();
    }

private:
    template <typename... Forms>
    void open() {
        (openAndClose<Forms>(), ...);
    }
    template <typename Form>
    void openAndClose() {
        windows_.openAnew<Form>();
        QTest::qWait(200);
        closeWindows();
        deleteClosedWindows();
    }

    RawService silent_;
};

template <typename On>
void turns(benchmark::State& state, double (On::*run)()) {
    double longest = 0;
    for ([[maybe_unused]] auto turn : state) {
        On place;
        double now = 0;
        try {
            now = (place.*run)();
        } catch (const std::runtime_error& failure) {
            state.SkipWithError(failure.what());
        }
        longest = std::max(longest, now);
        state.SetIterationTime(now / 1000);
        if (!place.failure().isEmpty()) {
            state.SkipWithError(place.failure().toUtf8().constData());
        }
    }
    state.counters["program_ms"] = longest;
    state.counters["limit_ms"] = noticed;
    state.counters["ratio"] = longest / noticed;
}

const bool registered = [] {
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, [run](benchmark::State& state) { turns(state, run); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(3);
    };
    add("turns/quotes", &Desk::quotes);
    add("turns/polls", &Desk::polls);
    add("turns/export", &Desk::exported);
    add("turns/libraryImport", &Desk::libraryImported);
    add("turns/scan", &Desk::scan);
    add("turns/openings", &DeadDesk::openings);
    return true;
}();

}  // namespace

}  // namespace guanchao
