// Reads a page of the web: its text as a browser shows it, and its tables. HTML that is broken is
// read as far as it makes sense; nothing fails.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

// The trimmed texts of its own cells by rows, a heading above and a footing below all others; a
// table within a cell is text of that cell.
using HtmlTable = QList<QStringList>;

struct HtmlPage {
    QString title;
    QString text;             // what the window shows
    QList<HtmlTable> tables;  // as they begin in the page, those within cells among them
};

HtmlPage readHtmlPage(const QByteArray& page);

}  // namespace guanchao
