#include "exchange/library_rows.h"

#include "base/values.h"
#include "exchange/row_values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString insertTheme(const Recordset& row, const QString& dm, const QString& ztktime,
                    const QString& numbers) {
    return u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,xiangguandu,guanzhudu) values("_s +
           quotedFields(row, 0, 0) + u',' + quoted(dm) + u',' + quotedFields(row, 2, 2) + u',' +
           quoted(ztktime) + u',' + numbers + u')';
}

QString insertCode(const Recordset& row, const QString& dm, const QString& newdmtime) {
    return u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values("_s + quoted(dm) + u',' +
           quotedFields(row, 1, 3) + u',' + quoted(newdmtime) + u')';
}

}  // namespace guanchao
