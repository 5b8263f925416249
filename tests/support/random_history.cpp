#include "tests/support/random_history.h"

#include <QFile>
#include <random>

#include "base/values.h"
#include "store/connection.h"
#include "tests/support/test_history.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int dayCount = 55;
constexpr int stockCount = 14;

class RandomHistory {
public:
    RandomHistory(unsigned seed, Connection& first, Connection& second)
        : random_(seed), first_(first), second_(second), days_(tradingDays(dayCount)) {}

    void write() {
        for (const QString& theme : {u"'甲'"_s, u"'乙'"_s, u"'it''s'"_s, u"'a'"_s, u"null"_s}) {
            themes_ << theme;
            hot_ << QStringList();
        }
        makeTables();
        for (int at = 0; at < 60; ++at) {
            members_ << qMakePair(pick(static_cast<int>(themes_.size())), pick(stockCount + 1));
            first_.execute(u"insert into dzhzhuti values("_s + themes_[members_.last().first] +
                           u',' + quoted(codeOf(members_.last().second)) + u')');
        }
        first_.execute(u"insert into dzhzhuti values('甲',null)"_s);
        for (int at = 0; at < 12; ++at) {
            hot_[pick(static_cast<int>(hot_.size()))] << days_[27 + pick(dayCount - 27)];
        }
        writeDays(u"SH000001"_s, -1);
        // The last one has no table.
        for (int stock = 0; stock < stockCount; ++stock) {
            writeDays(codeOf(stock), stock);
        }
    }

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    bool oneIn(int times) { return pick(times) == 0; }

    static QString codeOf(int stock) { return u"SZ%1"_s.arg(stock, 6, 10, QChar(u'0')); }

    QString kind() {
        const QStringList kinds = {u" text"_s, u" integer"_s, u" numeric"_s, u" real"_s, u""_s};
        return kinds[pick(static_cast<int>(kinds.size()))];
    }

    QString columns() {
        QString columns = u"shijian"_s + kind();
        for (const QString& name :
             {u"kp"_s, u"zg"_s, u"zd"_s, u"sp"_s, u"qiansp"_s, u"chengjiaol"_s, u"fuquanyz"_s}) {
            columns += u',' + name + kind();
        }
        return columns;
    }

    void makeTables() {
        first_.execute(u"create table dzhzhuti(zhutiname text,dm text)"_s);
        first_.execute(u"create index dzhzhuti_dm on dzhzhuti(dm,zhutiname)"_s);
        first_.execute(u"create table geguhq(dm text,"_s + columns() + u')');
        first_.execute(u"create index geguhq_day on geguhq(date(shijian))"_s);
        second_.execute(u"create table nishihq2("_s + columns() + u')');
    }

    bool isHot(int stock, const QString& day) {
        for (const auto& [theme, member] : members_) {
            if (member == stock && hot_[theme].contains(day) && !oneIn(5)) {
                return true;
            }
        }
        return false;
    }

    // Once in so many times one of the odd ones, each as often.
    QString oddOr(int times, const QStringList& odd, const QString& usual) {
        return odd.value(pick(times), usual);
    }
    QString price(int price) {
        const QString number = QString::number(price);
        const QString text = quoted(number + (oneIn(50) ? u".0"_s : QString()));
        return oddOr(400, {u"null"_s, u"'x'"_s}, asText_ ? text : number);
    }
    QString volume() {
        return oddOr(300, {u"null"_s, u"'12 lots'"_s, u"3000000000"_s, u"10.25"_s},
                     QString::number(100 + pick(100000)));
    }
    QString factor() {
        return oddOr(200, {u"null"_s, u"'1.25x'"_s}, oneIn(4) ? u"1.125"_s : u"1"_s);
    }
    QString time(const QString& day) {
        return oddOr(60,
                     {u"null"_s, u"'soon'"_s, quoted(day + u"T10:00"_s),
                      u"julianday("_s + quoted(day) + u')'},
                     quoted(oneIn(2) ? day : day + u" 00:00:00"_s));
    }

    // Without a stock that of the index, which is in tables of its own only.
    void writeDays(const QString& dm, int stock) {
        for (Connection* history : {&first_, &second_}) {
            history->execute(u"create table "_s + dm + u'(' + columns() + u')');
            history->execute(u"create index "_s + dm + u"_day on "_s + dm + u"(date(shijian))"_s);
        }
        int close = 1000 + pick(1000);
        // Some come to the market late.
        for (const QString& day : days_.mid(stock >= 0 && oneIn(3) ? pick(45) : 0)) {
            for (int times = oneIn(12) ? pick(2) * 2 : 1; times > 0; --times) {
                close = writeDay(dm, stock, day, close);
            }
        }
    }

    int writeDay(const QString& dm, int stock, const QString& day, int former) {
        const bool hot = isHot(stock, day);
        const int close = hot ? former * 11 / 10 + 1 : former - former * (pick(90) - 40) / 1000;
        const int high = hot && !oneIn(6) ? close : close + pick(3);
        const int low = hot && oneIn(3) ? high : std::min(close, former) - pick(10);
        asText_ = oneIn(2);
        const QString values = time(day) + u',' + price(former) + u',' +
                               (hot && oneIn(10) ? u"null"_s : price(high)) + u',' + price(low) +
                               u',' + price(close) + u',' + price(oneIn(200) ? 0 : former) + u',' +
                               volume() + u',' + factor();
        first_.execute(u"insert into "_s + dm + u" values("_s + values + u')');
        second_.execute(u"insert into "_s + dm + u" values("_s + values + u')');
        if (stock >= 0) {
            first_.execute(u"insert into geguhq values("_s + quoted(dm) + u',' + values + u')');
        }
        return close;
    }

    std::mt19937 random_;
    Connection& first_;
    Connection& second_;
    QStringList days_;
    QStringList themes_;              // literals
    QList<QStringList> hot_;          // days of each theme
    QList<QPair<int, int>> members_;  // theme and stock
    bool asText_ = false;
};

}  // namespace

void writeRandomHistory(unsigned seed, const StoreFile& first, const StoreFile& second) {
    for (const StoreFile& file : {first, second}) {
        QFile::remove(file.path);
        createStore(file.path, file.key, {});
    }
    Connection ofFirst = first.open();
    Connection ofSecond = second.open();
    Transaction inFirst(ofFirst);
    Transaction inSecond(ofSecond);
    RandomHistory(seed, ofFirst, ofSecond).write();
    inFirst.commit();
    inSecond.commit();
}

}  // namespace guanchao
