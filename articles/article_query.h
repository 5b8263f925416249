// The statement behind the list of articles: the conditions as typed into the browser's boxes, put
// together word by word.
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "base/date_trio.h"

namespace guanchao {

struct ArticleQuery {
    bool all = false;  // 全部显示: no condition counts
    DateTexts first;
    DateTexts last;
    QString author;                       // 作者
    QString category;                     // 大类
    QString subcategory;                  // 小类
    QString titleWord;                    // 标题包含词语
    std::array<QString, 3> contentWords;  // 内容包含词语, all of them
    QString limit;                        // 取前篇; empty: all rows

    QString statement() const;
    // How many articles there are, whatever the limit.
    QString countStatement() const;
    // Whether a list of so many articles may be a part of what there is.
    bool leavesOff(qint64 listed) const;

private:
    QString range() const;
    QString condition() const;
    QString limitClause() const;
    std::optional<double> most() const;
};

}  // namespace guanchao
