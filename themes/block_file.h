// The block files that users have from other programs: a line a stock, of seven digits, the market
// (1 Shanghai, 0 Shenzhen, 2 Beijing) and the number of the code, as .EBK begins with a blank line
// and .blk doesn't; or a CSV table in whose rows a cell holds the code, in any of its usual forms;
// or nothing but codes, several in a line.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

struct BlockStock {
    QString code;  // SH600000, or 600000 where the file doesn't tell the exchange
    QString note;  // of the column 备注

    friend bool operator==(const BlockStock&, const BlockStock&) = default;
};

struct BlockFile {
    QList<BlockStock> stocks;  // as they stand in the file
    QList<int> unread;         // lines that hold no code, from 1 on
};

// Blank lines count for nothing, nor does the header of a table.
BlockFile readBlock(const QStringList& lines);

// The seven digits; empty for a code of another exchange.
QString blockLine(const QString& dm);

// `path` ends in .blk, else it is taken for .EBK. Lines end in CR LF.
QByteArray blockBytes(const QString& path, const QStringList& dms);

}  // namespace guanchao
