#include "tools/live_check/check_table.h"

#include <algorithm>

#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// In columns of a terminal: 用途, 结果, 种类, 毫秒, 网址; the last cell ends where it ends.
constexpr qsizetype widths[] = {22, 6, 10, 7, 34};

// Chinese letters and marks stand two columns wide.
qsizetype columnsOf(const QString& text) {
    return text.size() + std::ranges::count_if(text, [](QChar it) { return it >= QChar(0x1100); });
}

QString titleOf(const Check& check) {
    const QString name = purposeName(check.purpose);
    return check.what.isEmpty() ? name : name + u'（' + check.what + u'）';
}

}  // namespace

CheckTable::CheckTable(QTextStream& out) : out_(out) {
    write({u"用途"_s, u"结果"_s, u"种类"_s, u"毫秒"_s, u"网址"_s, u"得到什么"_s});
}

void CheckTable::add(const CheckRow& row) {
    const QString title = titleOf(row.check);
    if (row.service.host.isEmpty()) {
        write({title, u"没有"_s, {}, {}, {}, row.finding.words});
        return;
    }
    write({title, row.finding.answers ? u"通"_s : u"不通"_s, kindName(row.service.kind),
           QString::number(row.milliseconds), row.service.host, row.finding.words});
    if (told_.isEmpty() || told_.last().title != title) {
        told_ << Told{title, false};
    }
    told_.last().isFine = told_.last().isFine || row.finding.answers;
}

QStringList CheckTable::silent() const {
    QStringList titles;
    for (const Told& it : told_) {
        if (!it.isFine) {
            titles << it.title;
        }
    }
    return titles;
}

void CheckTable::write(const QStringList& cells) {
    qsizetype column = 0;
    for (const qsizetype width : widths) {
        const QString& cell = cells[column++];
        out_ << cell << QString(std::max<qsizetype>(width - columnsOf(cell), 1), u' ');
    }
    out_ << cells.last() << '\n' << Qt::flush;
}

}  // namespace guanchao
