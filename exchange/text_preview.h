// 预览: what the first line of a theme text file would bring. The code table of the main store
// tells whether a code is known; failed statements raise StoreError.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "exchange/theme_text.h"
#include "grid/result_grid.h"
#include "store/connection.h"

namespace guanchao {

struct PreviewRow {
    QString dm;
    QString zhutiname;
};

struct TextPreview {
    qsizetype pieces = 0;    // rows of the table, of which the last may stay empty
    QList<PreviewRow> rows;  // filled from the top
    QStringList messages;    // what is wrong, in the order in which it was found
};

TextPreview previewLine(const QString& line, const TextSource& source, Connection& main);

// The table of a preview: 序号, 代码, 主题名称.
void showPreview(const TextPreview& preview, ResultGrid& grid);

}  // namespace guanchao
