#include "themes/membership.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool isMember(Connection& mainStore, const QString& dm, const QString& zhutiname) {
    const Recordset members(mainStore, u"select * from dzhzhuti where dm="_s + quoted(dm) +
                                           u" and zhutiname="_s + quoted(zhutiname));
    return members.count() > 0;
}

void joinTheme(Connection& mainStore, const QString& zhutiname, const QString& dm,
               const QString& jc, QDate day) {
    mainStore.execute(u"insert into dzhzhuti(zhutiname,dm,jc,ztktime) values("_s +
                      quoted(zhutiname) + u',' + quoted(dm) + u',' + quoted(jc) + u',' +
                      quoted(timeText(day)) + u')');
}

void leaveTheme(Connection& mainStore, const QString& zhutiname, const QString& dm) {
    mainStore.execute(u"delete from dzhzhuti where dm="_s + quoted(dm) + u" and zhutiname="_s +
                      quoted(zhutiname));
}

RowScope membershipOf(const QString& zhutiname, const QString& dm) {
    return {u"dzhzhuti"_s, u" where dm="_s + quoted(dm) + u" and zhutiname="_s + quoted(zhutiname)};
}

}  // namespace guanchao
