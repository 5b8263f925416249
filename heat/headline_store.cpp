#include "heat/headline_store.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString timeForm = u"yyyy-MM-dd HH:mm:ss"_s;

bool hasHeadlines(Connection& heat) {
    return hasTable(heat, u"xinwenbiaoti"_s);
}

void addTable(Connection& heat) {
    heat.execute(
        u"create table if not exists xinwenbiaoti (guanjianci text,riqi text,shijian text,"
        u"biaoti text,meiti text,wangzhi text)"_s);
    heat.execute(
        u"create index if not exists xinwenbiaoti_guanjianci on xinwenbiaoti(guanjianci,riqi)"_s);
    heat.execute(u"create index if not exists xinwenbiaoti_riqi on xinwenbiaoti(riqi)"_s);
}

}  // namespace

void keepHeadlines(Connection& heat, const QString& keyword, const QString& day,
                   const QList<Headline>& headlines) {
    if (headlines.isEmpty() && !hasHeadlines(heat)) {
        return;
    }
    addTable(heat);
    heat.execute(u"delete from xinwenbiaoti where riqi<"_s + quoted(day));
    heat.execute(u"delete from xinwenbiaoti where guanjianci="_s + quoted(keyword));
    for (const Headline& it : headlines.first(std::min(headlines.size(), mostKeptHeadlines))) {
        heat.execute(
            u"insert into xinwenbiaoti(guanjianci,riqi,shijian,biaoti,meiti,wangzhi) values("_s +
            quotedList({keyword, day, timeText(it.time), it.title, it.media, it.url}) + u')');
    }
}

QList<Headline> readHeadlines(const StoreFile& heat, const QString& keyword, const QString& day) {
    Connection store = heat.open();
    QList<Headline> headlines;
    if (!hasHeadlines(store)) {
        return headlines;
    }
    for (Recordset kept(store,
                        u"select shijian,biaoti,meiti,wangzhi from xinwenbiaoti where"
                        u" guanjianci="_s +
                            quoted(keyword) + u" and riqi="_s + quoted(day) +
                            u" order by shijian desc,rowid"_s);
         !kept.atEnd(); kept.moveNext()) {
        headlines << Headline{QDateTime::fromString(kept.value(0).toText(), timeForm),
                              kept.value(1).toText(), kept.value(2).toText(),
                              kept.value(3).toText()};
    }
    return headlines;
}

}  // namespace guanchao
