#include "tools/market_scale/market_scale.h"

#include <QDir>
#include <QSet>
#include <QStringList>
#include <random>

#include "base/files.h"
#include "services/stock_code.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

class Market {
public:
    Market(Connection& store, const MarketScale& scale) : store_(store), scale_(scale) {}

    void fill() {
        addIndexes();
        addStocks();
        addMemberships();
        store_.execute(
            u"insert into tempcanshu(id,xiugaizhutitime,hqtime) values(1,"
            u"'2026-11-24 09:00:00','2026-11-24 10:00:00')"_s);
    }

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    QString letters(int count, char16_t first, int range) {
        QString text;
        for (int at = 0; at < count; ++at) {
            text += QChar(static_cast<char16_t>(first + pick(range)));
        }
        return text;
    }

    void addCode(const QString& dm, const QString& jc, const QString& shenmu) {
        const double gain = (pick(2000) - 1000) / 100.0;
        const double price = 3 + pick(9000) / 100.0;
        store_.execute(
            u"insert into dmb values('%1','%2','%3','%4','2026-01-01 00:00:00',%5,%6,%7,%5,%5,%5,"
            u"%8,%9,'2026-11-24 10:00:00',0)"_s.arg(dm, dm.sliced(2), jc, shenmu)
                .arg(price)
                .arg(price * gain / 100)
                .arg(gain)
                .arg(1000 + pick(900000000))
                .arg(10000 + pick(2000000000)));
    }

    void addIndexes() {
        addCode(leadingIndex, u"上证指数"_s, u"szzs"_s);
        addCode(u"SH000300"_s, u"沪深300"_s, u"hs300"_s);
        addCode(u"SZ399001"_s, u"深证成指"_s, u"szcz"_s);
    }

    void addStocks() {
        for (int at = 0; at < scale_.stocks; ++at) {
            codes_ << marketCode(at);
            addCode(codes_.last(), letters(4, u'一', 3000), letters(4, u'a', 26));
        }
    }

    void addMemberships() {
        QSet<QPair<int, int>> members;
        while (members.size() < scale_.memberships) {
            const QPair<int, int> member(pick(scale_.themes), pick(scale_.stocks));
            if (members.contains(member)) {
                continue;
            }
            members.insert(member);
            store_.execute(
                u"insert into dzhzhuti values('%1','%2','某股','2026-10-%3 09:30:00',%4,%5)"_s
                    .arg(marketTheme(member.first), codes_[member.second])
                    .arg(1 + pick(28), 2, 10, QChar(u'0'))
                    .arg(1 + pick(10))
                    .arg(1 + member.first % 20));
        }
    }

    Connection& store_;
    MarketScale scale_;
    QStringList codes_;
    std::mt19937 random_{20261124};
};

}  // namespace

QString marketCode(int stock) {
    // Half of the stocks are of Shanghai.
    const bool shanghai = stock % 2 == 0;
    return (shanghai ? u"SH%1"_s : u"SZ%1"_s)
        .arg((shanghai ? 600000 : 0) + stock / 2 + 1, 6, 10, QChar(u'0'));
}

QString marketTheme(int theme) {
    return u"主题%1"_s.arg(theme, 3, 10, QChar(u'0'));
}

void makeMarketScale(const QString& folder, const MarketScale& scale) {
    const StoreFile main = storesIn(applicationFolder(folder)).main;
    createStore(main.path, main.key, schemaText(Schema::main));
    Connection store = main.open();
    Transaction transaction(store);
    Market(store, scale).fill();
    transaction.commit();
}

void writeMarketLists(const QString& folder) {
    Connection store = storesIn(applicationFolder(folder)).main.open();
    const auto write = [&](const QString& name, const QString& header, const QString& query) {
        QString text = header + u'\n';
        for (Recordset row(store, query); !row.atEnd(); row.moveNext()) {
            QStringList fields;
            for (int field = 0; field < row.fieldCount(); ++field) {
                fields << row.value(field).toText();
            }
            text += fields.join(u',') + u'\n';
        }
        replaceFile(QDir(folder).filePath(name), text.toUtf8());
    };
    write(u"codes.csv"_s, u"dm,jc"_s, u"select dm,jc from dmb order by dm"_s);
    write(u"themes.csv"_s, u"zhutiname,dm,xiangguandu,guanzhudu"_s,
          u"select zhutiname,dm,xiangguandu,guanzhudu from dzhzhuti order by 1,2"_s);
}

}  // namespace guanchao
