#include "tools/history_builder/theme_members.h"

#include <QStringList>

#include "formats/text_file.h"
#include "tools/history_builder/code_forms.h"
#include "tools/history_builder/csv_fields.h"
#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList themeNames = {u"zhutiname"_s, u"theme"_s,    u"主题"_s, u"主题名称"_s,
                                u"题材"_s,      u"题材名称"_s, u"概念"_s};
const QStringList codeNames = {u"dm"_s, u"code"_s, u"ts_code"_s, u"代码"_s, u"股票代码"_s};

struct ThemeColumns {
    qsizetype theme = -1;
    qsizetype dm = -1;
};

ThemeColumns themeColumns(const QList<QStringView>& header) {
    ThemeColumns columns;
    for (qsizetype place = 0; place < header.size(); ++place) {
        const QString name = header[place].toString().toLower();
        if (themeNames.contains(name)) {
            columns.theme = place;
        } else if (codeNames.contains(name)) {
            columns.dm = place;
        }
    }
    if (columns.theme < 0 || columns.dm < 0) {
        fail(u"第一行要写明各列的名称：zhutiname,dm，或者 主题,代码"_s);
    }
    return columns;
}

ThemeMember memberOf(const QList<QStringView>& fields, const ThemeColumns& columns) {
    if (fields.size() <= std::max(columns.theme, columns.dm)) {
        fail(u"缺少字段"_s);
    }
    const QString written = fields[columns.dm].toString();
    ThemeMember member{fields[columns.theme].toString(), stockCode(written)};
    if (member.theme.isEmpty()) {
        fail(u"没有主题名称"_s);
    }
    if (member.dm.isEmpty()) {
        fail(u"“"_s + written + u"”不是代码，例如 SH600000"_s);
    }
    return member;
}

}  // namespace

QList<ThemeMember> readThemeMembers(const QString& path, SkippedRows& skipped) {
    const QStringList lines = readTextFile(path).lines;
    QList<QStringView> fields;
    const QString header = lines.value(0);
    const QChar separator = header.contains(u',') ? u',' : u'\t';
    splitFields(header, separator, fields);
    const ThemeColumns columns = atLine(path, 1, [&] { return themeColumns(fields); });
    QList<ThemeMember> members;
    for (qsizetype line = 1; line < lines.size(); ++line) {
        if (lines[line].trimmed().isEmpty()) {
            continue;
        }
        splitFields(lines[line], separator, fields);
        const ThemeMember member =
            atLine(path, line + 1, [&] { return memberOf(fields, columns); });
        if (isOfBeijing(member.dm)) {
            ++skipped.beijing;
        } else {
            members << member;
        }
    }
    return members;
}

}  // namespace guanchao
