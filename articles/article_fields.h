// What the fields of the article editor hold.
#pragma once

#include "base/date_trio.h"

namespace guanchao {

struct ArticleFields {
    QString id = QStringLiteral("id");  // a number once the article is in the store
    DateTexts date;                     // 日期
    QString author;                     // 作者
    QString category;                   // 大类
    QString subcategory;                // 小类
    QString title;                      // 标题
    QString body;                       // 内容, plain text

    bool operator==(const ArticleFields&) const = default;
};

}  // namespace guanchao
