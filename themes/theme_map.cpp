#include "themes/theme_map.h"

#include <cmath>

#include "base/activity.h"
#include "base/short_amounts.h"
#include "base/values.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString gap = u"　"_s;

QString turnoverWords(double turnover) {
    return u"成交额 "_s + (std::isnan(turnover) ? u"–"_s : amountWords(turnover));
}

QString gradeWords(const QString& title, double grade) {
    return title + u' ' + (std::isnan(grade) ? u"–"_s : numberText(grade));
}

// `condition` leaves some themes out, or none.
QList<MapBox> themeBoxes(const Stores& stores, const QString& condition) {
    Connection store = stores.main.open();
    RowCursor row(store,
                  u"select zhutiname,avg(zhangfu),count(*),sum(totaljine),max(guanzhudu)"
                  u" from dzhzhuti INNER JOIN dmb on dzhzhuti.dm=dmb.dm"_s +
                      condition + u" group by zhutiname order by zhutiname"_s);
    QList<MapBox> themes;
    while (row.next()) {
        const QString name = row.string(0);
        themes << MapBox{.key = name,
                         .name = name,
                         .gain = row.number(1),
                         .members = static_cast<int>(row.number(2)),
                         .turnover = row.number(3),
                         .attention = row.number(4)};
    }
    return themes;
}

}  // namespace

double MapBox::area(MapArea by) const {
    switch (by) {
        case MapArea::turnover:
            return turnover;
        case MapArea::attention:
            return attention;
        case MapArea::members:
            break;
    }
    return members;
}

QList<MapBox> readThemeBoxes(const Stores& stores) {
    const Activity activity(u"读取全部主题"_s);
    return themeBoxes(stores, {});
}

std::optional<MapBox> readThemeBox(const Stores& stores, const QString& theme) {
    const QList<MapBox> found = themeBoxes(stores, u" where zhutiname="_s + quoted(theme));
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

QList<MapBox> readStockBoxes(const Stores& stores, const QString& theme) {
    const Activity activity(u"读取主题个股"_s);
    Connection store = stores.main.open();
    RowCursor row(store,
                  u"select dmb.dm,max(dmb.jc),max(zhangfu),max(totaljine),max(xiangguandu)"
                  u" from dzhzhuti INNER JOIN dmb on dzhzhuti.dm=dmb.dm where zhutiname="_s +
                      quoted(theme) + u" group by dmb.dm order by dmb.dm"_s);
    QList<MapBox> stocks;
    while (row.next()) {
        const QString dm = row.string(0);
        const QString jc = row.string(1);
        stocks << MapBox{.key = dm,
                         .name = jc.isEmpty() ? dm : jc,
                         .gain = row.number(2),
                         .members = 1,
                         .turnover = row.number(3),
                         .attention = row.number(4)};
    }
    return stocks;
}

QString themeWords(const MapBox& theme) {
    return gainWords(theme.gain) + gap + QString::number(theme.members) + u" 只"_s + gap +
           turnoverWords(theme.turnover) + gap + gradeWords(u"关注度"_s, theme.attention);
}

QString stockWords(const MapBox& stock) {
    return gainWords(stock.gain) + gap + turnoverWords(stock.turnover) + gap +
           gradeWords(u"相关度"_s, stock.attention);
}

}  // namespace guanchao
