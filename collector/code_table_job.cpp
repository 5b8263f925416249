#include "collector/code_table_job.h"

#include <QHash>

#include "base/activity.h"
#include "base/values.h"
#include "services/listed_name.h"
#include "services/quote_kind.h"
#include "services/quote_reply.h"
#include "services/quote_source.h"
#include "services/service_names.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The first three digits of the codes of stocks.
struct Range {
    QString exchange;
    int first;
    int last;
};
const Range ranges[] = {
    {u"sh"_s, 600, 605}, {u"sh"_s, 688, 689}, {u"sz"_s, 0, 3}, {u"sz"_s, 300, 301}};
constexpr int codesPerStart = 1000;

QStringList possibleCodes() {
    QStringList codes;
    for (const Range& range : ranges) {
        for (int number = range.first * codesPerStart; number < (range.last + 1) * codesPerStart;
             ++number) {
            codes << range.exchange + QString::number(number).rightJustified(6, u'0');
        }
    }
    return codes;
}

struct Listed {
    QString dm;
    QString jc;  // empty for a code that no stock has
};

QList<Listed> listedIn(const QString& lines) {
    QList<Listed> listed;
    for (const QuoteRow& row : quoteRows(lines)) {
        if (isWholeCode(row.dm())) {
            listed << Listed{row.dm(), plainName(row.text(field::name))};
        }
    }
    return listed;
}

QHash<QString, QString> knownNames(Connection& connection, const Item& item) {
    const QStringList codes = item.key.toUpper().split(u',');
    QHash<QString, QString> names;
    for (Recordset known(connection,
                         u"select dm,jc from dmb where dm in ("_s + quotedList(codes) + u")"_s);
         !known.atEnd(); known.moveNext()) {
        names.insert(known.value(0).toText(), known.value(1).toText());
    }
    return names;
}

QStringList changesBy(const QList<Listed>& stocks, const QHash<QString, QString>& known,
                      const Initials& initials, const QString& now) {
    QStringList changes;
    for (const Listed& stock : stocks) {
        if (stock.jc.isEmpty() || plainName(known.value(stock.dm)) == stock.jc) {
            continue;
        }
        const QString shenmu = initials.of(stock.jc);
        if (!known.contains(stock.dm)) {
            changes << u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values("_s +
                           quotedList({stock.dm, stock.dm.sliced(2), stock.jc, shenmu, now}) +
                           u")"_s;
        } else if (!hasDayMark(stock.jc)) {
            changes << u"update dmb set jc="_s + quoted(stock.jc) + u",shenmu="_s + quoted(shenmu) +
                           u" where dm="_s + quoted(stock.dm);
        }
    }
    return changes;
}

}  // namespace

CodeTableJob::CodeTableJob(const Stores& stores, const Clock& clock, const Initials& initials,
                           QList<Service> quote)
    : stores_(stores), clock_(clock), initials_(initials), quote_(std::move(quote)) {
    if (quote_.isEmpty()) {
        throw OperationError(allOffWords(u"quote"_s));
    }
}

QList<Item> CodeTableJob::items() const {
    const QStringList codes = possibleCodes();
    QList<Item> items;
    for (qsizetype from = 0; from < codes.size(); from += codesPerRequest) {
        const QStringList batch = codes.mid(from, codesPerRequest);
        items << Item{batch.join(u','),
                      batch.first().toUpper() + u" 至 "_s + batch.last().toUpper()};
    }
    return items;
}

std::optional<QString> CodeTableJob::nextRequest(const Item& item, const Asked& asked) const {
    if (!asked.pages.isEmpty()) {
        return std::nullopt;
    }
    return quoteKind(quote_.at(asked.way).kind)->path(item.key + u',');
}

QString CodeTableJob::linesOf(const Item& item, const Asked& asked, const QByteArray& page) const {
    return quoteKind(quote_.at(asked.way).kind)->lines(page, item.key + u',');
}

// A reply that lacks one of the codes broke off or refuses.
std::optional<Fault> CodeTableJob::faultOf(const Item& item, const Asked& before,
                                           const QByteArray& page) const {
    const bool isWhole = listedIn(linesOf(item, before, page)).size() == item.key.count(u',') + 1;
    return isWhole ? std::nullopt : std::optional(Fault{FaultKind::unreadable, nothingFound});
}

// The statements are ready before the store is locked: most batches have none.
void CodeTableJob::write(const Item& item, const Asked& asked) {
    Connection connection = stores_.main.open();
    const QStringList changes =
        changesBy(listedIn(linesOf(item, asked, asked.pages.first())), knownNames(connection, item),
                  initials_, timeText(clock_.now()));
    if (changes.isEmpty()) {
        return;
    }
    Transaction transaction(connection);
    for (const QString& change : changes) {
        connection.execute(change);
    }
    transaction.commit();
}

}  // namespace guanchao
