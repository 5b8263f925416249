#include "collector/themes_job.h"

#include "base/values.h"
#include "heat/url_encode.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Of equal attention those first that hold a stock of the watchlist.
QList<Item> ThemesJob::items() const {
    Connection connection = stores_.main.open();
    QList<Item> items;
    for (Recordset themes(connection,
                          u"select zhutiname from dzhzhuti group by zhutiname having"
                          u" max(guanzhudu)>"_s +
                              numberText(guanzhudu_) +
                              u" order by max(guanzhudu) desc,max(dm in (select dm from"_s +
                              u" zixuangu)) desc,zhutiname"_s);
         !themes.atEnd(); themes.moveNext()) {
        const QString name = themes.value(0).toText();
        items << Item{name, name};
    }
    lookUp(items, u"xinwenshul"_s, u"zhutiname"_s, overTheseDays());
    return items;
}

QString ThemesJob::wordsOf(const Item& item) const {
    return withoutMarks(item.key);
}

void ThemesJob::write(const Item& item, const Asked& asked) {
    writer_.writeTheme(item.key, found(item, asked));
}

}  // namespace guanchao
