#include "themes/theme_editing.h"

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/membership.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The pieces between the commas, in upper case. A piece keeps its blanks: with one inside it is no
// code.
QStringList codesIn(const QString& text) {
    QString list = trimBlanks(text);
    list.replace(u'，', u',');
    return list.toUpper().split(u',', Qt::SkipEmptyParts);
}

// The short name of a code that may join a theme here; nothing for a wrong code.
std::optional<QString> nameOfStock(Connection& store, const QString& code) {
    const std::optional<QString> jc = shortName(store, code);
    return isIndexCode(code) ? std::nullopt : jc;
}

// What the closing message tells of the codes, each list with its commas.
class Outcome {
public:
    void note(const QString& code, const std::optional<QString>& jc) {
        if (jc) {
            added_ += code + u' ' + *jc + u',';
        } else {
            wrong_ += (wrong_.isEmpty() ? QString() : u","_s) + code;
        }
    }

    QString message(const QString& done, const QString& theme) const {
        return done + u'"' + theme + u"\"完成!已加入："_s + added_ + u" 错误的代码："_s +
               (wrong_.isEmpty() ? u"无"_s : wrong_) + u"。"_s;
    }

private:
    QString added_;
    QString wrong_;
};

// Imports write it too.
RowScope timeOfThemes() {
    return {u"tempcanshu"_s, {}, u"xiugaizhutitime"_s, true};
}

}  // namespace

QString withoutSample(QString codes) {
    return codes.remove(sampleCodes);
}

ThemeEditing::ThemeEditing(const Stores& stores, const Clock& clock, Dialogs& dialogs, Edits& edits)
    : stores_(stores), clock_(clock), dialogs_(dialogs), edits_(edits) {}

ThemeFields ThemeEditing::open(const QString& theme) const {
    const Activity activity(u"读取主题"_s);
    ThemeFields fields{theme, QString(), u"3"_s};
    Connection store = stores_.main.open();
    Recordset members(
        store, u"select zhutiname,dm,jc,ztktime,guanzhudu from dzhzhuti  where zhutiname="_s +
                   quoted(theme) + u" order by rowid"_s);
    if (members.count() > 0) {
        fields.attention = members.value(u"guanzhudu").toText();
    }
    for (; !members.atEnd(); members.moveNext()) {
        fields.codes += members.value(u"dm").toText() + u',';
    }
    return fields;
}

QCoro::Task<bool> ThemeEditing::add(ThemeFields fields, std::stop_token stop) {
    const std::optional<ThemeEntry> entry = read(fields);
    if (!entry) {
        co_return false;
    }
    if (themeExists(entry->name)) {
        const bool agreed = co_await dialogs_.ask(stop, u"此主题名称已存在,更新吗? "_s);
        if (!agreed) {
            co_return false;
        }
    }
    const Run adding{u"添加主题"_s, u"加入主题"_s, false};
    write(adding, *entry);
    co_return true;
}

bool ThemeEditing::rewrite(const ThemeFields& fields) {
    const std::optional<ThemeEntry> entry = read(fields);
    if (entry) {
        write({u"修改主题"_s, u"修改主题"_s, true}, *entry);
    }
    return entry.has_value();
}

bool ThemeEditing::themeExists(const QString& name) const {
    const Activity activity(u"添加主题"_s);
    Connection store = stores_.main.open();
    const Recordset members(store, u"select dm from dzhzhuti  where zhutiname="_s + quoted(name));
    return members.count() > 0;
}

void ThemeEditing::write(const Run& run, const ThemeEntry& entry) {
    const Activity activity(run.activity);
    Outcome outcome;
    Connection store = stores_.main.open();
    const auto step = [&] {
        if (run.anew) {
            store.execute(u"delete from  dzhzhuti  where  zhutiname="_s + quoted(entry.name));
        }
        for (const QString& code : entry.codes) {
            const std::optional<QString> jc = nameOfStock(store, code);
            outcome.note(code, jc);
            if (!jc) {
                continue;
            }
            const NewMember member{entry.name, code, *jc, entry.time, entry.attention};
            if (run.anew) {
                joinTheme(store, member);
            } else {
                joinIfMissing(store, member);
            }
        }
        stampThemes(store, entry.time);
    };
    EditInHand edit(edits_, {run.activity + u' ' + entry.name});
    edit.write(store, stores_.main,
               {{u"dzhzhuti"_s, u" where zhutiname="_s + quoted(entry.name)}, timeOfThemes()},
               step);
    dialogs_.tell(outcome.message(run.done, entry.name));
}

std::optional<ThemeEntry> ThemeEditing::read(const ThemeFields& fields) {
    const QString name = trimBlanks(fields.name);
    if (name.isEmpty()) {
        dialogs_.tell(u"没有输入主题名称!"_s);
        return std::nullopt;
    }
    const std::optional<qint16> attention = wholeNumber16(fields.attention);
    if (!attention) {
        dialogs_.tell(u"关注度请输入-32768至32767之间的数字。"_s);
        return std::nullopt;
    }
    return ThemeEntry{name, codesIn(fields.codes), *attention, timeText(clock_.now())};
}

}  // namespace guanchao
