#include "collector/companies_job.h"

#include "base/values.h"
#include "heat/url_encode.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Stocks of the watchlist first. The attention of a stock is that of its foremost theme; its name
// is the one of the code table, and the user is shown its code where it has none.
QList<Item> CompaniesJob::items() const {
    Connection connection = stores_.main.open();
    QList<Item> items;
    for (Recordset stocks(connection,
                          u"select dzhzhuti.dm,ifnull(max(dmb.jc),max(dzhzhuti.jc)) from dzhzhuti"
                          u" left join dmb on dmb.dm=dzhzhuti.dm group by dzhzhuti.dm having"
                          u" max(guanzhudu)>"_s +
                              numberText(guanzhudu_) +
                              u" order by dzhzhuti.dm in (select dm from zixuangu) desc,"_s +
                              u"max(guanzhudu) desc,dzhzhuti.dm"_s);
         !stocks.atEnd(); stocks.moveNext()) {
        const QString dm = stocks.value(0).toText();
        const QString jc = stocks.value(1).toText();
        items << Item{dm, jc.isEmpty() ? dm : jc};
    }
    lookUp(items, u"gongsixinwen"_s, u"dm"_s, overTheseDays());
    return items;
}

QString CompaniesJob::wordsOf(const Item& item) const {
    return withoutMarks(item.key).right(codeDigits);
}

void CompaniesJob::write(const Item& item, const Asked& asked) {
    const QString jc = item.name == item.key ? QString() : item.name;
    writer_.writeCompany(item.key, jc, found(item, asked));
}

}  // namespace guanchao
