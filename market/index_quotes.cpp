#include "market/index_quotes.h"

#include "base/activity.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What is read, as the line of the window names it.
const QString homeIndexWords = u"国内指数"_s;
const QString worldIndexWords = u"外围指数"_s;

// What the box names that tells of a bad reply.
class IndexActivity : public Activity {
public:
    IndexActivity() : Activity(u"读取指数"_s, u"个股的行情照常更新。"_s) {}
};

QStringView turnoverCode(const HomeIndex& index) {
    return index.turnoverCode.isEmpty() ? index.code : index.turnoverCode;
}

HomeIndexPanel readHomePanel(const QuoteRow& fields) {
    const IndexActivity activity;
    return homeIndexPanel(fields);
}

Turnover readComposite(const QuoteRow& fields) {
    const IndexActivity activity;
    return compositeTurnover(fields);
}

}  // namespace

void IndexQuotes::chooseHome(int index) {
    if (index != home_) {
        screen_.clearHomeIndex();
        mean_ = 0;
    }
    home_ = index;
}

void IndexQuotes::chooseWorld(int index) {
    if (index != world_) {
        screen_.clearWorldIndex();
    }
    world_ = index;
}

QList<Reading> IndexQuotes::home() {
    return {{homeIndexWords, [this](std::stop_token stop) { return takeHome(stop); }},
            {chartWords, [this](std::stop_token stop) { return showHomeChart(stop); }}};
}

QList<Reading> IndexQuotes::world() {
    return {worldIndex(),
            {chartWords, [this](std::stop_token stop) { return showWorldChart(stop); }}};
}

Reading IndexQuotes::homePoll() {
    return {homeIndexWords, [this](std::stop_token stop) { return pollHome(stop); }};
}

Reading IndexQuotes::worldIndex() {
    return {worldIndexWords, [this](std::stop_token stop) { return fetchWorld(stop); }};
}

// The mean belongs to the index whose turnover is shown.
QCoro::Task<> IndexQuotes::takeHome(std::stop_token stop) {
    const std::optional<ReadIndex> read = co_await fetchHome(stop);
    if (read && read->index.hasRatio) {
        const QString code = turnoverCode(read->index).toString();
        mean_ = co_await meanVolume_.of(code, stop);
        showRatio(*read);
    }
}

QCoro::Task<> IndexQuotes::pollHome(std::stop_token stop) {
    const std::optional<ReadIndex> read = co_await fetchHome(stop);
    if (read) {
        showRatio(*read);
    }
}

// Nothing where no ratio can be told.
QCoro::Task<std::optional<IndexQuotes::ReadIndex>> IndexQuotes::fetchHome(std::stop_token stop) {
    const HomeIndex index = chosenHome();
    const QString code = index.code.toString();
    const QuoteRow fields = co_await desk_.fetch(code, stop);
    if (!hasHomeIndex(fields)) {
        screen_.showNoHomeIndex(noData(index.name.toString()));
        co_return std::nullopt;
    }
    ReadIndex read = {index, readHomePanel(fields), fields};
    // Already now: what completes it may be late or broken.
    screen_.showHomeIndex(read.panel);
    if (!index.turnoverCode.isEmpty()) {
        const QString whole = index.turnoverCode.toString();
        const QuoteRow composite = co_await desk_.fetch(whole, stop);
        if (!hasHomeIndex(composite)) {
            co_return std::nullopt;
        }
        read.panel.turnover = readComposite(composite);
        screen_.showHomeIndex(read.panel);
    }
    co_return read;
}

void IndexQuotes::showRatio(ReadIndex read) {
    const IndexActivity activity;
    if (read.index.hasRatio) {
        const bool marketOpen = globals_.jiaoyishiduan > 0;
        read.panel.ratio = indexRatio(read.fields, read.panel.turnover, mean_, marketOpen);
        screen_.showHomeIndex(read.panel);
    }
}

QCoro::Task<> IndexQuotes::fetchWorld(std::stop_token stop) {
    const QString code = chosenWorld().code.toString();
    const QuoteRow fields = co_await desk_.fetch(code, stop);
    const IndexActivity activity;
    if (!hasWorldIndex(fields)) {
        throw NotHad{u"没有数据"_s, u"没有找到该股数据!"_s};
    }
    screen_.showWorldIndex(worldIndexPanel(fields));
}

QCoro::Task<> IndexQuotes::showHomeChart(std::stop_token stop) {
    const QString path = chosenHome().chartPath.toString();
    co_await desk_.showChart(QuoteChart::homeIndex, path, stop);
}

QCoro::Task<> IndexQuotes::showWorldChart(std::stop_token stop) {
    const QString path = chosenWorld().chartPath.toString();
    co_await desk_.showChart(QuoteChart::worldIndex, path, stop);
}

}  // namespace guanchao
