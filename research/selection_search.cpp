#include "research/selection_search.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"
#include "grid/tianchongbiao.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int codeColumn = 1;
constexpr int shortNameColumn = 2;
constexpr int dateColumn = 3;
constexpr int themeColumn = 4;
constexpr int firstGainColumn = 5;

const QString columns =
    u"select xuanticaigu.dm as 代码,jc as 简称,date(xuanticai.riqi) as 日期,xuanticai.ticai as"
    u" 题材,ticaizhang as 题材涨, dapanzhang as 大盘涨,zonggeshu as 总个数,zhangtinshu as 涨停数,"
    u"yizishu as 一字数,"
    u"round((cast(fuquansp as Double)/cast(qian1sp as Double)-1)*100,2) as 股涨幅,"
    u"cast(chengjl as Double)/cast(chengjl10ri as Double) as 量比,"
    u"round((cast(hou1kp as Double)/cast(fuquansp as Double)-1)*100,2) as 开盘涨,"
    u"round((cast(fuquansp as Double)/cast(qian3sp as Double)-1)*100,2) as 前3涨,"
    u"round((cast(fuquansp as Double)/cast(qian10sp as Double)-1)*100,2) as 前10涨,"
    u"round((cast(fuquansp as Double)/cast(qian30sp as Double)-1)*100,2) as 前30涨,"
    u"round((cast(hou2kp as Double)/cast(hou1kp as Double)-1)*100,2) as 后1涨,"
    u"round((cast(hou2sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后2涨,"
    u"round((cast(hou5sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后5涨,"
    u"round((cast(hou10sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后10涨,"
    u"cast(hou1liang as Double)/cast(chengjl10ri as Double) as 后1量比,"
    u"round((cast(hou2kp as Double)/cast(hou1sp as Double)-1)*100,2) as 后2开盘"
    u" from xuanticai,xuanticaigu where xuanticai.ticai=xuanticaigu.ticai and"
    u" date(xuanticai.riqi)=date(xuanticaigu.riqi) "_s;

struct Tally {
    int wins = 0;
    double sum = 0;
};

// The words before win rate and average of each of the five gains.
struct ScoreWords {
    QStringView rate;
    QStringView average;
};
constexpr std::array<ScoreWords, 5> scoreWords = {{{u"当日胜率:", u"当日平均:"},
                                                   {u" 一日胜率:", u"一日平均:"},
                                                   {u" 二日胜率:", u"二日平均:"},
                                                   {u" 五日胜率:", u"五日平均:"},
                                                   {u" 十日胜率:", u"十日平均:"}}};

// A later price that was missing reads as a loss of everything: it adds nothing to the sum.
double laterGain(double gain) {
    return gain < -90 ? 0 : gain;
}

void count(const SelectionGains& row, std::array<Tally, 5>& tallies) {
    for (size_t at = 0; at < tallies.size(); ++at) {
        const double gain = row.gains[at];
        tallies[at].sum += at == 0 ? gain : laterGain(gain);
        tallies[at].wins += gain > 0 ? 1 : 0;
    }
}

QString line(int counted, const std::array<Tally, 5>& tallies) {
    QString text = u"总次数:"_s + QString::number(counted);
    for (size_t at = 0; at < tallies.size(); ++at) {
        const double rate = counted > 0 ? roundTo(1.0 * tallies[at].wins / counted * 100, 2) : 0;
        const double average = counted > 0 ? roundTo(tallies[at].sum / counted, 2) : 0;
        text +=
            scoreWords[at].rate + numberText(rate) + scoreWords[at].average + numberText(average);
    }
    return text;
}

// A gain whose divisor is zero is missing: it counts as none.
double gainOf(const Value& value) {
    return value.isNull() ? 0 : value.toNumber();
}

std::vector<SelectionGains> gainsOf(Recordset& found) {
    std::array<int, 5> fields = {};
    const std::array<QStringView, 5> names = {u"股涨幅", u"后1涨", u"后2涨", u"后5涨", u"后10涨"};
    std::transform(names.begin(), names.end(), fields.begin(),
                   [&](QStringView name) { return found.field(name); });
    const int date = found.field(u"日期");
    std::vector<SelectionGains> rows;
    rows.reserve(static_cast<size_t>(found.count()));
    for (found.moveFirst(); !found.atEnd(); found.moveNext()) {
        SelectionGains row{found.value(date).toText(), {}};
        for (size_t at = 0; at < fields.size(); ++at) {
            row.gains[at] = gainOf(found.value(fields[at]));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

struct Found {
    Recordset rows;
    QString score;
};

// What the library can't make out are the user's own words, not the store.
Recordset rowsOf(const SelectionQuery& query, Connection& store, const Work<std::monostate>& work) {
    try {
        return Recordset(store, query.statement(), [&work] { work.endIfAbandoned(); });
    } catch (const StoreError& failure) {
        if (failure.fault() != StoreFault::other) {
            throw;
        }
        throw StoreError(failure.reason(), failure.path(), failure.statement(),
                         StoreFault::condition);
    }
}

Found find(const StoreFile& main, const SelectionQuery& query, const QString& written,
           const Work<std::monostate>& work) {
    Activity anew({});
    if (!written.isEmpty()) {
        anew.wrote(written);
    }
    const Activity activity(
        u"搜索"_s,
        u"列表和统计没有变。如果是搜索条件写得不对（例如换行断开了一个词），改好后再按“搜  索”。"_s);
    Connection store = main.open();
    store.onlyRead();
    Recordset rows = rowsOf(query, store, work);
    const QString score = scoreLine(gainsOf(rows), query.mergeDates);
    return {std::move(rows), score};
}

void setWidths(ResultGrid& grid) {
    const QList<int> widths = {500, 1200, 1100, 1200, 1200, 800, 700, 700, 700};
    grid.setColWidths(widths);
    for (int col = static_cast<int>(widths.size()); col < grid.cols(); ++col) {
        grid.setColWidth(col, 800);
    }
}

void colour(ResultGrid& grid) {
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setCellBackColor(row, codeColumn, themeColour);
        grid.setCellBackColor(row, shortNameColumn, stockColour);
        for (int col = firstGainColumn; col < grid.cols(); ++col) {
            grid.setCellBackColor(row, col, signColour(grid, row, col));
        }
    }
}

}  // namespace

QString SelectionQuery::statement() const {
    QString words = trimBlanks(condition).toLower();
    if (byTheme) {
        words += u" and xuanticai.ticai="_s + quoted(trimBlanks(theme)) + u" "_s;
    }
    if (byCode) {
        words += u" and dm="_s + quoted(trimBlanks(code).toUpper()) + u" "_s;
    }
    if (byDates) {
        words += u" and date(xuanticai.riqi)>="_s + quoted(dateText(packDate(first))) +
                 u"  and date(xuanticai.riqi)<="_s + quoted(dateText(packDate(last))) + u" "_s;
    }
    return columns + words +
           u"  order by date(xuanticai.riqi) desc,xuanticai.ticai desc,xuanticai.rowid desc,"
           u"xuanticaigu.rowid"_s;
}

QString scoreLine(const std::vector<SelectionGains>& rows, bool mergeDates) {
    constexpr size_t mostOfOneDate = 3;
    int counted = 0;
    std::array<Tally, 5> tallies;
    for (size_t at = 0; at < rows.size(); ++at) {
        if (mergeDates && at >= mostOfOneDate && rows[at].riqi == rows[at - mostOfOneDate].riqi) {
            continue;
        }
        ++counted;
        count(rows[at], tallies);
    }
    return line(counted, tallies);
}

DateTexts firstDate(QDate today) {
    return dateTexts(today);
}

DateTexts lastDate(QDate today) {
    DateTexts texts = dateTexts(today);
    texts.month = QString::number(today.month() + 1);
    return texts;
}

void openSummary(const QString& folder, Shell& shell) {
    const Activity activity(u"打开题材选股总结"_s, u"总结由您自己写，程序只负责打开它。"_s);
    const QString path = folder + u"题材选股总结.txt"_s;
    if (!QFileInfo::exists(path)) {
        throw OperationError(u"没有文件 "_s + path);
    }
    shell.open(path);
}

SelectionSearch::SelectionSearch(const Stores& stores, Globals& globals, ResultGrid& grid)
    : stores_(stores), globals_(globals), grid_(grid) {
    grid_.setKeyColumns({codeColumn, dateColumn, themeColumn});
}

QCoro::Task<QString> SelectionSearch::search(SelectionQuery query, QString written,
                                             std::stop_token stop) {
    const auto read = [main = stores_.main, query, written](Work<std::monostate>& work) {
        return find(main, query, written, work);
    };
    Found found = co_await inWorker(read, stop);
    fillGrid(found.rows);
    co_return found.score;
}

void SelectionSearch::fillGrid(Recordset& found) {
    const GridFill fill(grid_);
    grid_.clear();
    grid_.setRows(1);
    grid_.setCols(1);
    if (found.count() > 0) {
        tianchongbiao(found, grid_, 1);
        setWidths(grid_);
        colour(grid_);
    }
}

std::optional<PressedRow> SelectionSearch::press(int row) {
    if (row <= 0 || grid_.cols() <= 8 || grid_.rows() <= 1) {
        return std::nullopt;
    }
    globals_.dangqiandm = grid_.textMatrix(row, codeColumn);
    const QString last = grid_.textMatrix(row, grid_.cols() - 1);
    globals_.dangqianjilu = wholeNumber32(last).value_or(0);
    return PressedRow{globals_.dangqiandm, grid_.textMatrix(row, themeColumn)};
}

}  // namespace guanchao
