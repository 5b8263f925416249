// The lists behind the editable boxes for category, subcategory and author, from the articles that
// are there. An empty list means that no row came back: the box then keeps the list that it has.
#pragma once

#include <QStringList>

#include "store/connection.h"
#include "store/stores.h"

namespace guanchao {

struct ArticleLists {
    QStringList categories;     // 大类
    QStringList subcategories;  // 小类
    QStringList authors;        // 作者
};

ArticleLists readArticleLists(Connection& store);

// The subcategories of one category.
QStringList subcategoriesOf(const Stores& stores, const QString& category);

}  // namespace guanchao
