#include "themes/theme_commands.h"

#include "base/activity.h"
#include "base/values.h"
#include "heat/news_notes.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/day_book.h"
#include "themes/membership.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Column 1 of the theme grid holds the name, column 3 the count of stocks, in all its forms.
constexpr int nameColumn = 1;
constexpr int countColumn = 3;

QString ofTheme(const QString& theme) {
    return u" where zhutiname="_s + quoted(theme);
}

RowScope nameIn(const QString& table, const QString& theme, const QString& name) {
    return {table, u" where zhutiname in ("_s + quotedList({theme, name}) + u')', u"zhutiname"_s};
}

bool isSmaller(const ResultGrid& themes, int row, int count) {
    return roundToWhole(themes.number(row, countColumn).value_or(0)) < count;
}

QString nameOf(const ResultGrid& themes, int row) {
    return trimBlanks(themes.textMatrix(row, nameColumn));
}

QStringList smallThemes(const ResultGrid& themes, int count) {
    QStringList names;
    for (int row = 1; row < themes.rows(); ++row) {
        if (isSmaller(themes, row, count)) {
            names << nameOf(themes, row);
        }
    }
    return names;
}

QString countWords(const QStringList& themes) {
    return QString::number(themes.size()) + u" 个主题"_s;
}

qint64 memberCount(const Stores& stores, const QString& theme) {
    Connection store = stores.main.open();
    return Recordset(store, u"select count(*) from dzhzhuti"_s + ofTheme(theme))
        .value(0)
        .toInteger();
}

}  // namespace

ThemeCommands::ThemeCommands(const Stores& stores, const Clock& clock, Dialogs& dialogs,
                             Removals& removals, Edits& edits)
    : stores_(stores), clock_(clock), dialogs_(dialogs), removals_(removals), edits_(edits) {}

QCoro::Task<Redraw> ThemeCommands::addStock(QString theme, std::stop_token stop) {
    const QString typed = co_await dialogs_.input(stop, u"请输入股票代码,示例:SH600585"_s,
                                                  u"添加到主题:"_s + theme, u"SH6"_s);
    if (typed.isEmpty()) {
        co_return Redraw::none;
    }
    const QString code = typed.toUpper();
    const Activity activity(u"为主题添加个股"_s);
    Connection store = stores_.main.open();
    if (isMember(store, theme, code)) {
        dialogs_.tell(u"该主题已加入过此股!"_s);
        co_return Redraw::none;
    }
    const std::optional<QString> jc = shortName(store, code);
    if (!jc) {
        dialogs_.tell(u"没有找到此股票代码:"_s + code);
        co_return Redraw::none;
    }
    EditInHand edit(edits_, {u"添加个股 "_s + theme + u' ' + *jc});
    edit.write(store, stores_.main, {membershipOf(theme, code)}, [&] {
        joinTheme(store, {theme, code, *jc, timeText(clock_.now().date())});
    });
    dialogs_.tell(u"为该主题添加个股完成!"_s);
    co_return Redraw::stocks;
}

Redraw ThemeCommands::removeStock(const QString& theme, const QString& code) {
    const Activity activity(u"为主题删除个股"_s);
    {
        Connection store = stores_.main.open();
        EditInHand edit(edits_,
                        {u"删除个股 "_s + theme + u' ' + shortName(store, code).value_or(code)});
        edit.write(store, stores_.main, {membershipOf(theme, code)},
                   [&] { leaveTheme(store, theme, code); });
    }
    dialogs_.tell(u"为该主题删除个股完成!"_s);
    return Redraw::stocks;
}

QCoro::Task<Redraw> ThemeCommands::changeRelevance(QString theme, QString code,
                                                   std::stop_token stop) {
    const std::optional<qint16> relevance = co_await askNumber(
        u"请输入相关度，以区别和主题的相关性"_s, u"修改相关度"_s, u"5"_s, 10, stop);
    if (!relevance) {
        co_return Redraw::none;
    }
    const Activity activity(u"修改相关度"_s);
    RowScope relevanceOf = membershipOf(theme, code);
    relevanceOf.column = u"xiangguandu"_s;
    const QString number = QString::number(*relevance);
    Connection store = stores_.main.open();
    const QString stock = shortName(store, code).value_or(code);
    EditInHand edit(edits_, {u"修改相关度 "_s + theme + u' ' + stock + u"→"_s + number});
    edit.write(store, stores_.main, {relevanceOf}, [&] {
        store.execute(u"update dzhzhuti set xiangguandu="_s + number + relevanceOf.condition);
    });
    co_return Redraw::stocks;
}

QCoro::Task<std::optional<qint16>> ThemeCommands::askNumber(QString question, QString title,
                                                            QString offered, int most,
                                                            std::stop_token stop) {
    const QString range = u"1-"_s + QString::number(most) + u"之间"_s;
    const QString typed =
        co_await dialogs_.input(stop, question + u",在"_s + range + u"。"_s, title, offered);
    const std::optional<qint16> number = wholeNumber16(typed);
    if (!number || *number < 1 || *number > most) {
        dialogs_.tell(u"请输入"_s + range + u"的数字。"_s);
        co_return std::nullopt;
    }
    co_return number;
}

QCoro::Task<Redraw> ThemeCommands::removeTheme(QString theme, std::stop_token stop) {
    const QString count = u"（"_s + QString::number(memberCount(stores_, theme)) + u" 条）"_s;
    const bool agreed =
        co_await dialogs_.ask(stop, u"确实要删除主题'"_s + theme + u"'吗?"_s + count);
    if (!agreed) {
        co_return Redraw::none;
    }
    const Activity activity(u"删除主题"_s);
    removeThemes({theme}, u"主题'"_s + theme + u"'"_s + count, u"删除主题 "_s + theme);
    dialogs_.tell(u"删除主题'"_s + theme + u"'完成!"_s);
    co_return Redraw::none;
}

QCoro::Task<Redraw> ThemeCommands::changeAttention(QString theme, std::stop_token stop) {
    const std::optional<qint16> attention = co_await askNumber(
        u"请输入关注度，以方便查找自己最关心的主题"_s, u"修改关注度"_s, u"1"_s, 20, stop);
    if (!attention) {
        co_return Redraw::none;
    }
    const Activity activity(u"修改关注度"_s);
    const QString number = QString::number(*attention);
    {
        Connection store = stores_.main.open();
        EditInHand edit(edits_, {u"修改关注度 "_s + theme + u"→"_s + number});
        edit.write(store, stores_.main, {{u"dzhzhuti"_s, ofTheme(theme), u"guanzhudu"_s}}, [&] {
            store.execute(u"update dzhzhuti set guanzhudu="_s + number + ofTheme(theme));
        });
    }
    dialogs_.tell(u"修改关注度'"_s + theme + u"'完成!"_s);
    co_return Redraw::themes;
}

QCoro::Task<Redraw> ThemeCommands::rename(QString theme, std::stop_token stop) {
    const QString typed =
        co_await dialogs_.input(stop, u"请输入新的主题名称"_s, u"修改主题名称:"_s + theme, theme);
    const QString name = trimBlanks(typed);
    if (name.isEmpty()) {
        co_return Redraw::none;
    }
    renameInAllTables(theme, name);
    dialogs_.tell(u"修改主题名称完成!"_s);
    co_return Redraw::themes;
}

void ThemeCommands::removeThemes(const QStringList& themes, const QString& words,
                                 const QString& name) {
    Connection store = stores_.main.open();
    Removal removal(removals_, store, stores_.main);
    Transaction transaction(store);
    for (const QString& theme : themes) {
        removal.keep({u"dzhzhuti"_s, {u"zhutiname"_s, u"dm"_s}}, ofTheme(theme));
        store.execute(u"delete from dzhzhuti"_s + ofTheme(theme));
    }
    transaction.commit();
    edits_.pushRemoval(name, removal.complete(mainWindowPlace, words));
}

void ThemeCommands::renameInAllTables(const QString& theme, const QString& name) {
    Activity activity(u"修改主题名称"_s);
    const QString change =
        u" set zhutiname="_s + quoted(name) + u" where zhutiname="_s + quoted(theme);
    EditInHand edit(edits_, {.name = u"修改主题名称 "_s + theme + u"→"_s + name,
                             .nameBefore = theme,
                             .nameAfter = name});
    Connection main = stores_.main.open();
    const auto renameIn = [&](const QString& table, const QString& words, bool isScratch) {
        RowScope scope = nameIn(table, theme, name);
        scope.isScratch = isScratch;
        edit.write(main, stores_.main, {scope},
                   [&] { main.execute(u"update "_s + table + change); });
        activity.wrote(words);
    };
    renameIn(u"dzhzhuti"_s, u"主题库"_s, false);
    renameIn(u"zhutidapanhq"_s, u"主题大盘行情"_s, true);
    renameIn(u"zhutijiankong"_s, u"主题监控"_s, false);
    if (hasDayBook(main)) {
        edit.write(main, stores_.main, {daysOfThemes({theme, name})},
                   [&] { renameInDayBook(main, theme, name); });
        activity.wrote(u"主题日记"_s);
    }
    Connection heat = stores_.heat.open();
    edit.write(heat, stores_.heat,
               {nameIn(u"xinwenshul"_s, theme, name), notesOf(u"xinwenshul"_s, {theme, name})},
               [&] {
                   heat.execute(u"update xinwenshul"_s + change);
                   renameNotes(heat, u"xinwenshul"_s, theme, name);
               });
}

QCoro::Task<Redraw> ThemeCommands::removeSmallThemes(const ResultGrid& themes,
                                                     std::stop_token stop) {
    const QString typed =
        co_await dialogs_.input(stop, u"你想删除小于几只股票的主题呢："_s,
                                u"删除小于指定只数的主题，慎重执行，不能恢复。"_s, u"2"_s);
    const std::optional<qint16> count = wholeNumber16(trimBlanks(typed));
    if (!count) {
        dialogs_.tell(u"请指定2-32767之间的数字。"_s);
        co_return Redraw::none;
    }
    if (*count < 2) {
        dialogs_.tell(u"请指定大于1的数据数据!"_s);
        co_return Redraw::none;
    }
    // What is counted is what goes, though the grid may be filled anew while the question stands.
    const QStringList small = smallThemes(themes, *count);
    const QString last = nameOf(themes, themes.rows() - 1);
    const bool agreed = co_await dialogs_.ask(
        stop, u"确实要全部删除小于"_s + QString::number(*count) + u"只股票的主题吗?（"_s +
                  countWords(small) + u"）\n\n删错了可以按 Ctrl+Z 或“撤消删除”取回。"_s);
    if (!agreed) {
        co_return Redraw::none;
    }
    const Activity activity(u"删除小于指定只数的主题"_s);
    removeThemes(small, countWords(small), u"删除小主题 "_s + countWords(small));
    dialogs_.tell(u"删除主题'"_s + last + u"'完成!"_s);
    co_return Redraw::themes;
}

}  // namespace guanchao
