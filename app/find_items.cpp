#include "app/find_items.h"

#include <algorithm>
#include <array>

#include "formats/initials.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Fit : std::uint8_t { equal, begins, holds, none };

Fit fitOf(QStringView text, QStringView typed) {
    if (text.compare(typed, Qt::CaseInsensitive) == 0) {
        return equal;
    }
    if (text.startsWith(typed, Qt::CaseInsensitive)) {
        return begins;
    }
    return text.contains(typed, Qt::CaseInsensitive) ? holds : none;
}

Fit fitOf(const FindItem& item, QStringView typed) {
    Fit best = std::min(fitOf(item.name, typed), fitOf(item.initials, typed));
    if (item.kind == FindItem::Kind::stock) {
        best = std::min({best, fitOf(item.detail, typed),
                         fitOf(QStringView(item.detail).right(codeDigits), typed)});
    }
    return best;
}

}  // namespace

QList<FindItem> withInitials(QList<FindItem> items) {
    const Initials initials(commonExceptions());
    for (FindItem& item : items) {
        item.initials = initials.of(item.name);
    }
    return items;
}

QList<FindItem> readFindItems(const Stores& stores) {
    Connection store = stores.main.open();
    QList<FindItem> items;
    for (Recordset rows(store, u"select dm,jc,shenmu from dmb order by dm"_s); !rows.atEnd();
         rows.moveNext()) {
        items << FindItem{.kind = FindItem::Kind::stock,
                          .name = rows.value(1).toText(),
                          .detail = rows.value(0).toText(),
                          .initials = rows.value(2).toText()};
    }
    QList<FindItem> themes;
    for (Recordset rows(store, u"select distinct zhutiname from dzhzhuti order by zhutiname"_s);
         !rows.atEnd(); rows.moveNext()) {
        themes << FindItem{.kind = FindItem::Kind::theme,
                           .name = rows.value(0).toText(),
                           .detail = {},
                           .initials = {}};
    }
    themes = withInitials(themes);
    items += themes;
    for (FindItem& theme : themes) {
        theme.kind = FindItem::Kind::page;
    }
    return items + themes;
}

QList<FindItem> foundItems(const QList<FindItem>& items, const QString& typed, qsizetype most) {
    const QString text = typed.trimmed();
    std::array<QList<FindItem>, none> byFit;
    for (const FindItem& item : items) {
        const Fit fit = text.isEmpty() ? none : fitOf(item, text);
        if (fit != none && byFit[fit].size() < most) {
            byFit[fit] << item;
        }
    }
    return (byFit[equal] + byFit[begins] + byFit[holds])
        .first(std::min(most, byFit[equal].size() + byFit[begins].size() + byFit[holds].size()));
}

}  // namespace guanchao
