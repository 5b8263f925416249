#include "tests/research/scan_judge.h"

#include "base/values.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList numbers = {
    u"fuquansp"_s, u"sp"_s,       u"zg"_s,      u"qian1sp"_s,     u"qian3sp"_s,  u"qian10sp"_s,
    u"qian30sp"_s, u"fuquankp"_s, u"chengjl"_s, u"chengjl10ri"_s, u"hou1kp"_s,   u"hou2kp"_s,
    u"hou1sp"_s,   u"hou2sp"_s,   u"hou5sp"_s,  u"hou10sp"_s,     u"hou1liang"_s};

QString textOf(const Value& value) {
    return numberText(value.toNumber());
}

}  // namespace

void ScanJudge::chooseThemes() {
    Transaction transaction(main_);
    const QString gain = u"(cast(sp as Double)/cast(qiansp as Double)-1)*100"_s;
    for (Recordset index(first_, u"select date(shijian),round("_s + gain +
                                     u",2) from SH000001 where date(shijian)>'2017-04-06' order by"
                                     u" date(shijian)"_s);
         !index.atEnd(); index.moveNext()) {
        const QString day = index.value(0).toText();
        const QString riqi = day + u" 00:00:00"_s;
        for (Recordset theme(
                 first_,
                 u"select zhutiname,round(avg(round("_s + gain + u",2)),2) as 涨幅,max(round("_s +
                     gain + u",2)) as best,count(*) as 只数,sum(iif("_s + gain +
                     u">9.5 and zg=sp,1,0)) as zhangtinshu,sum(iif("_s + gain +
                     u">9.5 and zg=zd,1,0)) as yizishu from dzhzhuti inner join geguhq on"
                     u" dzhzhuti.dm=geguhq.dm where date(shijian)="_s +
                     quoted(day) +
                     u" group by zhutiname order by (zhangtinshu-只数/4-2) desc,zhutiname"_s);
             !theme.atEnd(); theme.moveNext()) {
            if (theme.value(u"zhangtinshu").toNumber() < theme.value(u"只数").toNumber() / 4 + 2) {
                break;
            }
            if (index.value(1).isNull()) {
                ++passedOver_;
                break;
            }
            const QString ticai = theme.value(u"zhutiname").toText();
            main_.execute(
                u"insert into xuanticai values("_s + quoted(riqi) + u',' + quoted(ticai) + u',' +
                textOf(theme.value(u"涨幅")) + u',' + textOf(theme.value(u"zhangtinshu")) + u',' +
                textOf(theme.value(u"yizishu")) + u',' + textOf(theme.value(u"只数")) + u',' +
                textOf(index.value(1)) + u',' + textOf(theme.value(u"best")) + u')');
            takeMembers(ticai, day, false, false);
        }
    }
    transaction.commit();
}

void ScanJudge::addStocks(bool onlyFallen) {
    Transaction transaction(main_);
    for (Recordset chosen(main_,
                          u"select date(riqi),ticai from xuanticai where date(riqi)>'2006-04-06'"
                          u" order by date(riqi),ticai"_s);
         !chosen.atEnd(); chosen.moveNext()) {
        takeMembers(chosen.value(1).toText(), chosen.value(0).toText(), true, onlyFallen);
    }
    transaction.commit();
}

void ScanJudge::takeMembers(const QString& ticai, const QString& day, bool writesHigh,
                            bool onlyFallen) {
    for (Recordset member(first_, u"select dm from dzhzhuti where dm is not null and zhutiname="_s +
                                      quoted(ticai) + u" order by rowid"_s);
         !member.atEnd(); member.moveNext()) {
        const QString dm = member.value(0).toText();
        Row row;
        row[u"riqi"_s] = Value(day + u" 00:00:00"_s);
        row[u"dm"_s] = Value(dm);
        row[u"ticai"_s] = Value(ticai);
        try {
            const QString D = onlyFallen ? dayAfterFall(dm, day) : day;
            if (!D.isEmpty()) {
                takeStock(dm, D, row, writesHigh);
            }
        } catch (const StoreError&) {
            throw;
        } catch (const OperationError&) {
            ++passedOver_;
        }
    }
}

QString ScanJudge::dayAfterFall(const QString& dm, const QString& day) {
    Recordset it =
        days(dm, u"date(shijian)>="_s + quoted(day) + u" order by date(shijian) limit 10"_s);
    if (it.count() < 3) {
        return {};
    }
    const double close = it.value(u"fuquansp").toNumber();
    it.moveNext();
    it.moveNext();
    return it.value(u"fuquansp").toNumber() / close > 0.93 ? QString()
                                                           : it.value(u"shijian").toText();
}

void ScanJudge::takeStock(const QString& dm, const QString& D, Row row, bool writesHigh) {
    for (const QString& number : numbers) {
        row[number] = Value(qint64(0));
    }
    const auto take = [&row](const QString& column, const Recordset& day, QStringView field) {
        row[column] = day.value(field);
    };
    Recordset back =
        days(dm, u"date(shijian)<="_s + quoted(D) + u" order by date(shijian) desc limit 30"_s);
    if (back.count() < 10) {
        return;
    }
    double volumes = 0;
    for (int counter = 1; !back.atEnd(); back.moveNext(), ++counter) {
        if (counter == 1) {
            take(u"sp"_s, back, u"sp");
            take(u"zg"_s, back, u"zg");
            take(u"fuquankp"_s, back, u"fuquankp");
            take(u"fuquansp"_s, back, u"fuquansp");
            take(u"chengjl"_s, back, u"chengjiaol");
        }
        if (counter == 2) {
            take(u"qian1sp"_s, back, u"fuquansp");
        }
        if (counter < 11) {
            volumes += back.value(u"chengjiaol").toNumber();
            row[u"chengjl10ri"_s] = Value(volumes / counter);
        }
        if (counter == 4) {
            take(u"qian3sp"_s, back, u"fuquansp");
        }
        if (counter == 11) {
            take(u"qian10sp"_s, back, u"fuquansp");
        }
        if (counter > 28) {
            take(u"qian30sp"_s, back, u"fuquansp");
        }
    }
    Recordset ahead =
        days(dm, u"date(shijian)>"_s + quoted(D) + u" order by date(shijian) limit 10"_s);
    for (int counter = 1; !ahead.atEnd(); ahead.moveNext(), ++counter) {
        if (counter == 1) {
            take(u"hou1kp"_s, ahead, u"fuquankp");
            take(u"hou1sp"_s, ahead, u"fuquansp");
            take(u"hou1liang"_s, ahead, u"chengjiaol");
        }
        if (counter == 2) {
            take(u"hou2kp"_s, ahead, u"fuquankp");
            take(u"hou2sp"_s, ahead, u"fuquansp");
        }
        if (counter == 6) {
            take(u"hou5sp"_s, ahead, u"fuquansp");
        }
        if (counter > 8) {
            take(u"hou10sp"_s, ahead, u"fuquansp");
        }
    }
    QStringList values;
    for (const QString& number : numbers) {
        values << textOf(row[number]);
    }
    if (ahead.count() == 0) {
        return;
    }
    if (!writesHigh) {
        values[numbers.indexOf(u"zg"_s)] = u"null"_s;
    }
    const Recordset name(main_, u"select jc from dmb where dm="_s + quoted(dm));
    main_.execute(u"insert into xuanticaigu(riqi,dm,jc,ticai,"_s + numbers.join(u',') +
                  u") values("_s + quoted(row[u"riqi"_s].toText()) + u',' + quoted(dm) + u',' +
                  quoted(name.atEnd() ? QString() : name.value(0).toText()) + u',' +
                  quoted(row[u"ticai"_s].toText()) + u',' + values.join(u',') + u')');
}

Recordset ScanJudge::days(const QString& dm, const QString& condition) {
    if (!hasTable(second_, dm)) {
        createTableFromContent(second_, dm, u"select * from nishihq2"_s);
    }
    return Recordset(second_,
                     u"select date(shijian) as shijian,fuquanyz*cast(sp as Double) as"
                     u" fuquansp,fuquanyz*cast(kp as Double) as fuquankp,cast(sp as"
                     u" Double) as sp,cast(zg as Double) as zg,chengjiaol from "_s +
                         quotedName(dm) + u" where "_s + condition);
}

}  // namespace guanchao
