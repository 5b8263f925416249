#include "research/selection_search.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"
#include "research/selection_reading.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

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
    grid_.setKeyColumns({selectionCodeColumn, selectionDateColumn, selectionThemeColumn});
}

// Where the reading ends too early the former list comes back.
QCoro::Task<SelectionScore> SelectionSearch::search(SelectionQuery query, QString written,
                                                    FirstRowsShown firstRowsShown,
                                                    std::stop_token stop) {
    ResultGrid former;
    bool showsFirstRows = false;
    const auto putBack = qScopeGuard([&] {
        if (showsFirstRows) {
            grid_.swapTable(former);
        }
    });
    const auto showFirstRows = [&](const FoundTable& table) {
        grid_.swapTable(*table);
        former.swapTable(*table);
        showsFirstRows = true;
        firstRowsShown();
    };
    const auto read = [main = stores_.main, query, written](Work<FoundTable>& work) {
        return readSelection(main, query.statement(), query.mergeDates, written, work);
    };
    const std::stop_token unstopped;
    std::optional<FoundSelection> found =
        co_await inWorker<FoundTable>(read, showFirstRows, unstopped, stop);
    grid_.swapTable(*found->table);
    showsFirstRows = false;
    co_return std::move(found->score);
}

std::optional<PressedRow> SelectionSearch::press(int row) {
    if (row <= 0 || grid_.cols() <= 8 || grid_.rows() <= 1) {
        return std::nullopt;
    }
    globals_.dangqiandm = grid_.textMatrix(row, selectionCodeColumn);
    const QString last = grid_.textMatrix(row, grid_.cols() - 1);
    globals_.dangqianjilu = wholeNumber32(last).value_or(0);
    return PressedRow{globals_.dangqiandm, grid_.textMatrix(row, selectionThemeColumn)};
}

}  // namespace guanchao
