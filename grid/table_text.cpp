#include "grid/table_text.h"

#include <QStringList>
#include <algorithm>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isFormula(const QString& text) {
    return !text.isEmpty() && u"=+-@"_s.contains(text[0]) && !readsAsNumber(text);
}

bool needsQuotes(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c == u',' || c == u'"' || c == u'\r' || c == u'\n'; });
}

QString csvCell(QString text) {
    if (isFormula(text)) {
        text.prepend(u'\'');
    }
    return needsQuotes(text) ? u'"' + text.replace(u'"', u"\"\""_s) + u'"' : text;
}

QString copiedCell(QString text) {
    return text.replace(u"\r\n"_s, u" "_s)
        .replace(u'\t', u' ')
        .replace(u'\r', u' ')
        .replace(u'\n', u' ');
}

QString copiedLine(const ResultGrid& grid, int row, const QList<int>& cols) {
    QStringList cells;
    for (const int col : cols) {
        cells << copiedCell(grid.textMatrix(row, col));
    }
    return cells.join(u'\t') + u'\n';
}

}  // namespace

QString copiedText(const ResultGrid& grid, const QList<int>& rows, const QList<int>& cols) {
    QString text = rows.size() > 1 ? copiedLine(grid, 0, cols) : QString();
    for (const int row : rows) {
        text += copiedLine(grid, row, cols);
    }
    return text;
}

QString csvLine(const ResultGrid& grid, int row, const QList<int>& cols) {
    QStringList cells;
    for (const int col : cols) {
        cells << csvCell(grid.textMatrix(row, col));
    }
    return cells.join(u',') + u"\r\n"_s;
}

}  // namespace guanchao
