#include "themes/block_file.h"

#include <QRegularExpression>
#include <algorithm>
#include <utility>

#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// By the digit of the market.
const QStringList exchanges = {u"SZ"_s, u"SH"_s, u"BJ"_s};

// Quoted cells may hold separators; two quotes in one stand for one.
QStringList cellsOf(const QString& line) {
    QStringList cells = {QString()};
    bool quotes = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QChar c = line[at];
        if (c == u'"' && quotes && at + 1 < line.size() && line[at + 1] == u'"') {
            cells.last() += line[++at];
        } else if (c == u'"') {
            quotes = !quotes;
        } else if (!quotes && (c == u',' || c == u';' || c == u'\t' || c == u'|')) {
            cells << QString();
        } else {
            cells.last() += c;
        }
    }
    return cells;
}

// A line without the separators of a table is one of words.
QStringList wordsOf(const QString& line) {
    static const QRegularExpression blanks(u"[\\s，、；]+"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    const QStringList cells = cellsOf(line);
    return cells.size() > 1 ? cells : line.split(blanks, Qt::SkipEmptyParts);
}

// What spreadsheets put before a text goes.
QString plain(const QString& cell) {
    QString text = trimBlanks(cell);
    while (text.startsWith(u'\'') || text.startsWith(u'=')) {
        text.remove(0, 1);
    }
    return text;
}

// Empty if the cell holds none.
QString codeOf(const QString& cell) {
    static const QRegularExpression market(u"^([012])(\\d{6})$"_s);
    static const QRegularExpression before(u"^(SH|SZ|BJ)[.:]?(\\d{6})$"_s);
    static const QRegularExpression behind(u"^(\\d{6})\\.(SH|SS|XSHG|SZ|XSHE|BJ)$"_s);
    static const QRegularExpression bare(u"^\\d{6}$"_s);
    const QString text = plain(cell).toUpper();
    if (const auto match = market.match(text); match.hasMatch()) {
        return exchanges[match.captured(1).toInt()] + match.captured(2);
    }
    if (const auto match = before.match(text); match.hasMatch()) {
        return match.captured(1) + match.captured(2);
    }
    if (const auto match = behind.match(text); match.hasMatch()) {
        const QString name = match.captured(2);
        const bool shanghai = name == u"SS"_s || name == u"XSHG"_s;
        return (shanghai ? u"SH"_s : name == u"XSHE"_s ? u"SZ"_s : name) + match.captured(1);
    }
    return bare.match(text).hasMatch() ? text : QString();
}

// All of a line of nothing but codes; of a row of a table the first.
QStringList codesIn(const QStringList& cells) {
    QStringList codes;
    bool isList = true;
    for (const QString& cell : cells) {
        const QString code = codeOf(cell);
        isList = isList && (!code.isEmpty() || trimBlanks(cell).isEmpty());
        if (!code.isEmpty()) {
            codes << code;
        }
    }
    return isList ? codes : codes.mid(0, 1);
}

bool isHeader(const QStringList& cells) {
    static const QRegularExpression digit(u"\\d"_s);
    return cells.size() > 1 &&
           std::ranges::none_of(cells, [](const QString& cell) { return cell.contains(digit); });
}

// In the columns of the header, if there was one.
class BlockReader {
public:
    void take(const QString& line, int number) {
        if (trimBlanks(line).isEmpty()) {
            return;
        }
        const QStringList cells = wordsOf(line);
        const QStringList codes = codesIn(cells);
        const bool isFirst = std::exchange(first_, false);
        for (const QString& code : codes) {
            file_.stocks << BlockStock{code, noteIn(cells)};
        }
        if (isFirst && codes.isEmpty() && isHeader(cells)) {
            takeHeader(cells);
        } else if (codes.isEmpty()) {
            file_.unread << number;
        }
    }

    const BlockFile& file() const { return file_; }

private:
    void takeHeader(const QStringList& cells) {
        for (qsizetype col = 0; col < cells.size(); ++col) {
            if (plain(cells[col]) == u"备注"_s) {
                noteCol_ = col;
            }
        }
    }

    // Bytes that are no text are no note.
    QString noteIn(const QStringList& cells) const {
        const QString note = noteCol_ < 0 ? QString() : trimBlanks(cells.value(noteCol_));
        return note.contains(QChar::ReplacementCharacter) ? QString() : note;
    }

    BlockFile file_;
    bool first_ = true;
    qsizetype noteCol_ = -1;
};

}  // namespace

BlockFile readBlock(const QStringList& lines) {
    BlockReader reader;
    for (qsizetype at = 0; at < lines.size(); ++at) {
        reader.take(lines[at], static_cast<int>(at + 1));
    }
    return reader.file();
}

QString blockLine(const QString& dm) {
    const qsizetype market = exchanges.indexOf(dm.first(std::min<qsizetype>(2, dm.size())));
    return market < 0 ? QString() : QString::number(market) + dm.sliced(2);
}

QByteArray blockBytes(const QString& path, const QStringList& dms) {
    QByteArray bytes = path.endsWith(u".blk"_s, Qt::CaseInsensitive) ? "" : "\r\n";
    for (const QString& dm : dms) {
        if (const QString line = blockLine(dm); !line.isEmpty()) {
            bytes += line.toLatin1() + "\r\n";
        }
    }
    return bytes;
}

}  // namespace guanchao
