// What is searched for among the selected theme-days, and the statement that finds it.
#pragma once

#include "base/date_trio.h"

namespace guanchao {

// The boxes of the search as they stand.
struct SelectionQuery {
    QString condition;     // a fragment of SQL that begins with " and "
    bool byTheme = false;  // 题材
    QString theme;         // the whole name
    bool byCode = false;   // 代码
    QString code;
    bool byDates = false;  // 时间
    DateTexts first;
    DateTexts last;
    bool mergeDates = false;  // 同日期合并

    QString statement() const;
};

}  // namespace guanchao
