#include "articles/article_browser.h"

#include <utility>

#include "articles/article_removal.h"
#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"
#include "grid/tianchongbiao.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int idColumn = 1;
constexpr int titleColumn = 6;

QDate dateOf(const Value& value) {
    return QDate::fromString(value.toText(), Qt::ISODate);
}

}  // namespace

ArticleBrowser::ArticleBrowser(const Stores& stores, Globals& globals, const Clock& clock,
                               Dialogs& dialogs, Removals& removals, ResultGrid& grid)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      dialogs_(dialogs),
      removals_(removals),
      grid_(grid) {}

BrowserLoad ArticleBrowser::load() {
    const Activity activity(u"读取文章目录"_s);
    BrowserLoad load;
    load.contextKind = std::exchange(globals_.wenzhangdalei, QString());
    load.contextValue = std::exchange(globals_.wenzhangxiaolei, QString());
    Connection store = stores_.article.open();
    const Recordset range(store,
                          u"select date(min(rq)) as minrq,date(max(rq)) as maxrq FROM wenzhang"_s);
    const bool empty = range.value(u"maxrq").toText().isEmpty();
    load.first = dateTexts(empty ? clock_.now().date() : dateOf(range.value(u"minrq")));
    load.last = dateTexts(empty ? clock_.now().date() : dateOf(range.value(u"maxrq")));
    load.lists = readArticleLists(store);
    return load;
}

ArticleCounts ArticleBrowser::list(const ArticleQuery& query) {
    query_ = query;
    return fill(GridFill::Rows::ofAnotherList);
}

ArticleCounts ArticleBrowser::listAgain() {
    return fill(GridFill::Rows::ofTheSameList);
}

ArticleCounts ArticleBrowser::fill(GridFill::Rows rows) {
    const Activity activity(u"查询文章"_s);
    Connection store = stores_.article.open();
    Recordset articles(store, query_.statement());
    const GridFill fill(grid_, rows);
    grid_.clear();
    grid_.setRows(1);
    grid_.setCols(1);
    if (articles.count() > 0) {
        tianchongbiao(articles, grid_, 1);
        grid_.setColWidths({600, 800, 1300, 1400, 1200, 2200, 4200});
    }
    const qint64 listed = articles.count();
    return {query_.leavesOff(listed)
                ? Recordset(store, query_.countStatement()).value(0).toInteger()
                : listed,
            listed};
}

void ArticleBrowser::press(int row) {
    if (row > 0 && grid_.rows() > 2 && grid_.cols() > 2) {
        grid_.setToolTipText(trimBlanks(grid_.textMatrix(row, titleColumn)));
        globals_.dangqianwenzhang = idOf(row);
    } else {
        grid_.setToolTipText({});
    }
}

bool ArticleBrowser::takeCurrentRow() {
    globals_.dangqianwenzhang = idOf(grid_.markedRow());
    return globals_.dangqianwenzhang > 0;
}

bool ArticleBrowser::takeChosenRow() {
    if (takeCurrentRow()) {
        return true;
    }
    dialogs_.tell(u"请先选中一篇文章！"_s);
    return false;
}

QCoro::Task<bool> ArticleBrowser::removeCurrent(std::stop_token stop) {
    // A press in a list of one holds no article: what is named is what goes.
    const int row = grid_.markedRow();
    const qint32 id = idOf(row);
    const bool agreed = co_await dialogs_.ask(
        stop, u"确实要删除文章《"_s + grid_.textMatrix(row, titleColumn) + u"》吗?"_s);
    if (!agreed) {
        co_return false;
    }
    const Activity activity(u"删除文章"_s);
    Connection store = stores_.article.open();
    removeArticle(store, id, globals_);
    dialogs_.tell(u" 已删除这篇文章!"_s);
    co_return true;
}

QCoro::Task<bool> ArticleBrowser::removeListed(std::stop_token stop) {
    QList<qint32> listed;
    for (int row = 1; row < grid_.rows(); ++row) {
        listed << idOf(row);
    }
    const bool agreed = co_await dialogs_.ask(
        stop, u"确实要删除本表中显示的所有文章吗?（"_s + articleCountWords(listed) + u"）"_s);
    if (!agreed) {
        co_return false;
    }
    const auto job = [store = stores_.article, &removals = removals_, listed](const auto& work) {
        const Activity activity(u"删除本表"_s);
        removeArticles(store, listed, removals, [&work] { work.endIfAbandoned(); });
        return true;
    };
    co_await inWorker(job, stop);
    if (listed.contains(globals_.dangqianwenzhang)) {
        globals_.dangqianwenzhang = 0;
    }
    dialogs_.tell(u" 已删除本表中显示的所有文章!"_s);
    co_return true;
}

qint32 ArticleBrowser::idOf(int row) const {
    return grid_.cols() > idColumn ? grid_.textMatrix(row, idColumn).toInt() : 0;
}

}  // namespace guanchao
