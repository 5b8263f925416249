// The four lists of articles that share something with the one in work, the most read first. Table
// wenzhang of the article store. A list that can't be read stays empty and leaves the others as
// they are.
#pragma once

#include <QStringList>
#include <exception>

#include "articles/article_fields.h"
#include "store/stores.h"

namespace guanchao {

// Lines of id, two blanks and title. An empty list means that no row came back.
struct RelatedArticles {
    QStringList sameDay;          // 同日文章
    QStringList sameAuthor;       // 同作者文章
    QStringList sameCategory;     // 同大类文章
    QStringList sameSubcategory;  // 同小类文章

    std::exception_ptr failure;  // of the first list that could not be read
};

// By what the fields hold, without the article `id`; 0 leaves none out.
RelatedArticles readRelatedArticles(Connection& store, const ArticleFields& fields, qint32 id);

// The id at the start of a line. Raises OperationError if no number stands there.
qint32 idOfLine(const QString& line);

}  // namespace guanchao
