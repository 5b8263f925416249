#include "themes/membership.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString ofMember(const QString& theme, const QString& dm) {
    return u" where dm="_s + quoted(dm) + u" and zhutiname="_s + quoted(theme);
}

}  // namespace

bool isMember(Connection& mainStore, const QString& theme, const QString& dm) {
    const Recordset members(mainStore,
                            u"select zhutiname,dm from dzhzhuti"_s + ofMember(theme, dm));
    return members.count() > 0;
}

void joinTheme(Connection& mainStore, const NewMember& member) {
    QString columns = u"zhutiname,dm,jc,ztktime"_s;
    QString values = quotedList({member.theme, member.dm, member.jc, member.time});
    if (member.attention) {
        columns += u",guanzhudu"_s;
        values += u',' + QString::number(*member.attention);
    }
    mainStore.execute(u"insert into dzhzhuti("_s + columns + u") values("_s + values + u')');
}

bool joinIfMissing(Connection& mainStore, const NewMember& member) {
    if (isMember(mainStore, member.theme, member.dm)) {
        return false;
    }
    joinTheme(mainStore, member);
    return true;
}

void leaveTheme(Connection& mainStore, const QString& theme, const QString& dm) {
    mainStore.execute(u"delete from dzhzhuti"_s + ofMember(theme, dm));
}

RowScope membershipOf(const QString& theme, const QString& dm) {
    return {u"dzhzhuti"_s, ofMember(theme, dm)};
}

void stampThemes(Connection& mainStore, const QString& time) {
    mainStore.execute(u"update tempcanshu set xiugaizhutitime="_s + quoted(time));
}

}  // namespace guanchao
