// What services answer: quotes, days, pages and pictures.
#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QUrlQuery>
#include <cmath>

#include "base/activity.h"
#include "collector/search_page.h"
#include "formats/gbk.h"
#include "formats/html_page.h"
#include "formats/page_text.h"
#include "market/chart_box.h"
#include "market/index_panels.h"
#include "market/stock_quote.h"
#include "services/bar_check.h"
#include "services/factors.h"
#include "services/headlines_eastmoney.h"
#include "services/quote_tencent.h"
#include "tests/campaign/outside_reader.h"
#include "tools/practice_market/practice_bars.h"
#include "tools/practice_market/practice_charts.h"
#include "tools/practice_market/practice_headlines.h"
#include "tools/practice_market/practice_pages.h"
#include "tools/practice_market/practice_quotes.h"
#include "tools/practice_market/practice_search.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QDateTime now(QDate(2026, 11, 24), QTime(10, 0, 0));

const PracticeQuotes& market() {
    static const PracticeQuotes quotes(
        readPracticeStocks(QStringLiteral(GUANCHAO_SOURCE_DIR "/data/codes.csv")));
    return quotes;
}

QList<QByteArray> inBothEncodings(const QStringList& texts) {
    QList<QByteArray> all;
    for (const QString& text : texts) {
        all << gbkFromText(text) << text.toUtf8();
    }
    return all;
}

QList<QByteArray> pages() {
    return inBothEncodings(
        {practicePage(market(), u"/600000/"_s, now), practiceProxyPage(),
         practiceSearchPage(u"白酒"_s, 30, now.date()),
         u"<table><tr><td>甲<table><tr><th>乙</table><tfoot><tr><td>丙</table>"_s});
}

// In every format that can be written here, and as the practice market draws it.
QList<QByteArray> pictures() {
    QList<QByteArray> all = {practiceChart(market(), u"/newchart/min/n/sh600000.gif"_s, now)};
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(qRgb(200, 30, 60));
    for (const QByteArray& format : QImageWriter::supportedImageFormats()) {
        QBuffer buffer;
        if (buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format.constData())) {
            all << buffer.data();
        }
    }
    return all;
}

void requireFigures(const QStringList& shown) {
    for (const QString& text : shown) {
        requireSense(!text.contains(u"nan"_s) && !text.contains(u"inf"_s), "显示了没有尽头的数");
    }
}

// What a panel refuses is shown by none.
void panel(const std::function<QStringList()>& figures) {
    try {
        requireFigures(figures());
    } catch (const OperationError&) {
        return;
    }
}

QStringList stockFigures(const QuoteRow& row, const Fundamentals& fundamentals) {
    const StockPanel it = stockPanel(row, fundamentals, 1e6, true);
    return {it.gain,
            it.volume,
            it.amount,
            it.limitUp.text,
            it.limitDown.text,
            it.prices.swing,
            it.priceEarnings.value_or(QString()),
            it.turnoverRate.value_or(QString()),
            it.priceToBook.value_or(QString()),
            it.ratio.value_or(QString())};
}

void showPanels(const QuoteRow& row) {
    if (hasStock(row)) {
        panel([&] { return stockFigures(row, Fundamentals()); });
    }
    if (hasHomeIndex(row)) {
        panel([&]() -> QStringList {
            const HomeIndexPanel it = homeIndexPanel(row);
            return {it.change,
                    it.gain,
                    it.turnover.volume,
                    it.turnover.amount,
                    compositeTurnover(row).amount,
                    indexRatio(row, it.turnover, 1e6, true).value_or(QString())};
        });
    }
    if (hasWorldIndex(row)) {
        panel([&] { return QStringList{worldIndexPanel(row).gain}; });
    }
}

void readQuotes(const QByteArray& bytes) {
    constexpr qsizetype mostFields = 60;  // that are looked at
    const QString text = textFromGbk(bytes);
    const QList<QuoteRow> rows = quoteRows(text);
    for (const QuoteRow& row : rows.first(qMin(rows.size(), 200))) {
        for (qsizetype at = 0; at <= qMin(row.lastIndex(), mostFields); ++at) {
            const std::optional<double> figure = row.figure(at);
            requireSense(!figure || (std::isfinite(*figure) && isMarketFigure(*figure)),
                         "把不是数字的字段当成了数字");
            requireWholeCharacters(row.text(at));
        }
    }
    showPanels(quoteRow(text));
}

void readDays(const QString& kind, const QByteArray& bytes) {
    const QString dm = u"SH600000"_s;
    const BarRange range{dm, QDate(2000, 1, 1), now.date(), now};
    for (const DayBar& it : checkedBars(barKind(kind)->read(bytes, dm), range).bars) {
        for (const double figure : {it.open, it.high, it.low, it.close, it.volume}) {
            requireSense(it.day.isValid() && std::isfinite(figure), "把不是一天的行当成了一天");
        }
    }
}

void readDividends(const QByteArray& bytes) {
    const double factor = readFactors(bytes, u"SH600000"_s).value_or(FactorList()).on(now.date());
    requireSense(std::isfinite(factor) && factor > 0, "复权因子不是正数");
}

void readTencentQuotes(const QByteArray& bytes) {
    readQuotes(gbkFromText(TencentQuotes().lines(bytes, u"sh600000,sz000001,"_s)));
}

void requireKeyData(const QuoteRow& quote, const Fundamentals& it) {
    requireSense(std::isfinite(it.floatInTenThousands()) && std::isfinite(it.netAssets()),
                 "基本面是没有尽头的数");
    requireFigures(stockFigures(quote, it));
    requireWholeCharacters(fundamentalTexts(it).mqlt);
}

void readKeyData(const QByteArray& bytes) {
    static const QuoteRow quote = quoteRow(market().line(u"sh600000"_s, now));
    const QString text = textFromGbk(bytes);
    for (const Fundamentals& it :
         {readFundamentals(text), readFundamentalsLine(text, u"SH600000"_s)}) {
        requireKeyData(quote, it);
    }
}

void showPicture(const QByteArray& bytes) {
    static auto* const box = new ChartBox;
    box->resize(40, 30);
    box->showPicture(bytes);
    box->grab();
}

void readPage(const QByteArray& bytes) {
    requireWholeCharacters(pageText(bytes));
    const HtmlPage page = readHtmlPage(bytes);
    requireWholeCharacters(QString(page.title + page.text));
    for (const HtmlTable& table : page.tables) {
        for (const QStringList& row : table) {
            requireWholeCharacters(row.join(u' '));
        }
    }
}

void readSearch(const QByteArray& bytes) {
    static const CollectorSettings settings;
    const SearchPage page(bytes);
    requireSense(page.results(settings).value_or(0) >= 0, "结果数小于零");
    requireWholeCharacters(page.text());
}

void readHeadlines(const QByteArray& bytes) {
    const HeadlinesPage page = EastmoneyHeadlines::read(bytes, u"铜"_s, 1);
    requireSense(page.total >= 0, "新闻数小于零");
    requireWholeCharacters(page.text);
    for (const Headline& it : page.headlines) {
        requireSense(!page.fault.isEmpty() || (it.time.isValid() && !it.title.isEmpty()),
                     "没有时间或标题的新闻");
        requireWholeCharacters(it.title);
    }
}

QByteArray headlinesOfCopper() {
    const QUrlQuery question(EastmoneyHeadlines::path(u"铜"_s, 1).section(u'?', 1));
    const QString param = question.queryItemValue(u"param"_s, QUrl::FullyDecoded);
    return practiceHeadlines(question.queryItemValue(u"cb"_s), param.toUtf8(), now);
}

}  // namespace

void requireWholeCharacters(QStringView text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at].isSurrogate()) {
            const bool isFirst = text[at].isHighSurrogate() && ++at < text.size();
            requireSense(isFirst && text[at].isLowSurrogate(), "半个字符");
        }
    }
}

QList<OutsideReader> pageReaders() {
    const QStringList codes = {u"sh600000"_s, u"sz000001"_s, u"sh000001"_s, u"int_dji"_s};
    QStringList quotes = {market().reply(codes, now), u"var hq_str_sh600000=\"\";\n"_s};
    for (const QString& code : codes) {
        quotes << market().line(code, now);
    }
    // What the practice market answers to the requests of the kind.
    const auto days = [](const QString& kind) {
        const BarRange range{u"SH600000"_s, QDate(2026, 8, 1), now.date(), now};
        const QString path = barKind(kind)->paths(range).first();
        return inBothEncodings({practiceBars(market(), path, now).value_or(QString())});
    };
    const auto reader = [](const QString& kind) {
        return [kind](const QByteArray& bytes) { readDays(kind, bytes); };
    };
    const QString dividends = u"/realstock/company/sh600000/hfq.js"_s;
    const QString factors = practiceBars(market(), dividends, now).value_or(QString());
    const QString keyData = practicePage(market(), u"/news/stock/600000.shtml"_s, now);
    const QString line =
        u"var hq_str_sh600000_i=\"A,pfyh,2.19,2.46,1.86,12.4,11145.9,1865347.1,1492277.7,"
        u"1492277.7,0,CNY,409.2,459,10,1,15,897.7,347.9\";"_s;
    const QString tencent = u"v_sh600519=\"1~贵州茅台~600519~1304~1310~1308~52477~"_s +
                            u"0~"_s.repeated(23) +
                            u"20261124150003~-6~-0.46~1315~1300~x~52477~684210~\";"_s;
    const QString search = practiceSearchPage(u"铜"_s, 0, now.date());
    return {
        {"quotes", "行情", 60000, false, inBothEncodings(quotes), readQuotes},
        {"csv", "CSV 历史行情", 30000, false, days(u"csv"_s), reader(u"csv"_s)},
        {"sina", "新浪历史行情", 20000, false, days(u"sina"_s), reader(u"sina"_s)},
        {"bars", "腾讯历史行情", 20000, false, days(u"tencent"_s), reader(u"tencent"_s)},
        {"klines", "东财历史行情", 20000, false, days(u"eastmoney"_s), reader(u"eastmoney"_s)},
        {"factors", "复权因子", 20000, false, inBothEncodings({factors}), readDividends},
        {"tencent", "腾讯行情", 20000, false, inBothEncodings({tencent}), readTencentQuotes},
        {"key_data", "基本面", 50000, false, inBothEncodings({keyData, line}), readKeyData},
        {"pictures", "走势图", 40000, false, pictures(), showPicture},
        {"pages", "网页和里面的表格", 50000, false, pages(), readPage},
        {"searches", "搜索结果网页", 30000, false, inBothEncodings({search}), readSearch},
        {"headlines", "新闻标题", 20000, false, {headlinesOfCopper()}, readHeadlines},
    };
}

}  // namespace guanchao
