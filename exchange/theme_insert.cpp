#include "exchange/theme_insert.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool addMembership(Connection& store, const QString& name, const QString& dm, const QString& jc,
                   const QString& date) {
    const Recordset present(store, u"select zhutiname,dm from dzhzhuti where dm="_s + quoted(dm) +
                                       u" and zhutiname="_s + quoted(name));
    if (!present.atEnd()) {
        return false;
    }
    store.execute(u"insert into dzhzhuti(zhutiname,dm,jc,ztktime) values("_s + quoted(name) + u',' +
                  quoted(dm) + u',' + quoted(jc) + u',' + quoted(date) + u")"_s);
    return true;
}

void stampThemes(Connection& store, const QString& date) {
    store.execute(u"update tempcanshu set xiugaizhutitime="_s + quoted(date));
}

}  // namespace guanchao
