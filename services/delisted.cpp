#include "services/delisted.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString delistedCodes(Connection& mainStore) {
    return hasTable(mainStore, u"tuishi"_s) ? u"(select dm from tuishi)"_s : u"('')"_s;
}

QString quoteTimeOrDelisted(Connection& mainStore) {
    return u"case when dmb1.dm in "_s + delistedCodes(mainStore) + u" then "_s +
           quoted(delistedWord) + u" else datetime(newhqtime) end"_s;
}

void markDelisted(Connection& mainStore, const QString& dm, const QString& now) {
    mainStore.execute(u"create table if not exists tuishi (dm text,tuishitime text)"_s);
    mainStore.execute(u"insert into tuishi(dm,tuishitime) values("_s + quoted(dm) + u',' +
                      quoted(now) + u")"_s);
    mainStore.execute(u"update dmb set zhangjine=0,zhangfu=0 where dm="_s + quoted(dm));
}

void unmarkDelisted(Connection& mainStore, const QString& dm) {
    mainStore.execute(u"delete from tuishi where dm="_s + quoted(dm));
}

}  // namespace guanchao
