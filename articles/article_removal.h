// How articles go: from the table wenzhang of the article store, in one transaction. Failed
// statements raise StoreError.
#pragma once

#include <QList>
#include <functional>

#include "base/globals.h"
#include "store/connection.h"
#include "store/removals.h"

namespace guanchao {

// Of what the window of articles can take back.
inline const QString articleWindowPlace = QStringLiteral("文章管理器");

// 20 篇文章
QString articleCountWords(const QList<qint32>& articles);

// If it was the current article, none is afterwards.
void removeArticle(Connection& store, qint32 id, Globals& globals);

// For a worker: the window of articles can take them back. `meanwhile` may end it by raising; all
// are there then.
void removeArticles(const StoreFile& file, const QList<qint32>& ids, Removals& removals,
                    const std::function<void()>& meanwhile);

}  // namespace guanchao
