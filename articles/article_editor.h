// One article in work: reading, which counts, adding, saving and deleting. Table wenzhang of the
// article store. It answers through Dialogs what the fields lack; failed statements raise
// StoreError. Two editors may hold the same article: the last save wins.
#pragma once

#include <optional>

#include "articles/article_lists.h"
#include "articles/related_articles.h"
#include "base/globals.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class ArticleEditor {
public:
    ArticleEditor(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs);

    ArticleLists lists() const;

    // Takes over the current article, or with none begins a new one from the article context, which
    // is empty afterwards. Nothing if the article is deleted.
    std::optional<ArticleFields> open();

    // Takes up another article. Nothing if it is deleted.
    std::optional<ArticleFields> moveTo(qint32 id);

    RelatedArticles related(const ArticleFields& fields) const;

    // 添加: always a new article; its id comes into the fields. True if it is stored.
    bool add(ArticleFields& fields);
    // 保存: adds what is not in the store yet. The words to show for it; empty if it is refused. An
    // article that was deleted elsewhere loses its id: the next save adds it.
    QString save(ArticleFields& fields);

    // 删除: true if the user agreed.
    QCoro::Task<bool> remove(ArticleFields fields, std::stop_token stop);

    // Asks what becomes of the unsaved changes.
    QCoro::Task<Unsaved> askToSave(ArticleFields fields, std::stop_token stop);

    // 添加完毕, 修改完毕: what shows for a moment after a save.
    static inline const QString added = QStringLiteral("添加完毕!");
    static inline const QString changed = QStringLiteral("修改完毕!");

private:
    // The fields as they are stored.
    struct Checked {
        QString day;
        QString author;
        QString category;
        QString subcategory;
        QString title;
        QString body;
    };

    ArticleFields newArticle(const QString& kind, const QString& value) const;
    std::optional<Checked> check(ArticleFields& fields);
    std::optional<Checked> refuse(const QString& answer);
    bool update(const Checked& checked) const;
    void tellDeleted();

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    qint32 id_ = 0;  // the article in work, 0 for a new one
};

}  // namespace guanchao
