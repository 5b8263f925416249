// The list of the user's articles: what its boxes hold at a load, the query, and the deletions.
// Table wenzhang of the article store. Failed statements raise StoreError.
#pragma once

#include "articles/article_lists.h"
#include "articles/article_query.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/removals.h"
#include "store/stores.h"

namespace guanchao {

// What a load puts into the boxes of the window.
struct BrowserLoad {
    DateTexts first;
    DateTexts last;
    ArticleLists lists;
    QString contextKind;   // 大类 handed over by the caller; empty: all articles are shown
    QString contextValue;  // 小类
};

// How many articles a query finds, and how many of them its limit lets into the list.
struct ArticleCounts {
    qint64 found = 0;
    qint64 listed = 0;
};

class ArticleBrowser {
public:
    ArticleBrowser(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                   Removals& removals, ResultGrid& grid);

    // Takes the article context over and empties it.
    BrowserLoad load();

    // Fills the grid, newest first; the article that was marked stays so if it is listed.
    ArticleCounts list(const ArticleQuery& query);
    // The same query after an article has changed; the user's own order of the rows stays.
    ArticleCounts listAgain();

    // A press on a row makes its article the current one, if the grid shows more than one.
    void press(int row);

    // The id of the grid's marked row becomes the current article; true if it is one.
    bool takeCurrentRow();
    // The same, with a word to the user if no row is chosen.
    bool takeChosenRow();

    // 删除本篇: the article of the grid's marked row. True if it is done.
    QCoro::Task<bool> removeCurrent(std::stop_token stop);

    // 删除本表: every article that the grid shows; they can be taken back. True if it is done.
    QCoro::Task<bool> removeListed(std::stop_token stop);

private:
    ArticleCounts fill(GridFill::Rows rows);
    qint32 idOf(int row) const;

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    Removals& removals_;
    ResultGrid& grid_;
    ArticleQuery query_;  // behind the list
};

}  // namespace guanchao
