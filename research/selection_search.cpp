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
        return readSelection(main, query, written, work);
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
