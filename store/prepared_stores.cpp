#include "store/prepared_stores.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <functional>
#include <stdexcept>

#include "base/values.h"
#include "formats/gbk.h"
#include "formats/initials.h"
#include "formats/seed_list.h"
#include "store/bound_insert.h"
#include "store/fresh_store.h"
#include "store/recordset.h"

// Resources of a static library have to be named once by who uses them; the macro wants to stand
// outside of any namespace.
static void loadSchemaResource() {
    Q_INIT_RESOURCE(schema);
}

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

class Seeds {
public:
    Seeds(QString dataFolder, const QDateTime& now)
        : dataFolder_(std::move(dataFolder)), now_(timeText(now)) {}

    void fillMain(Connection& connection) const {
        const QList<QStringList> codes = list("codes", 2);
        fillCodes(connection, codes);
        fillThemes(connection, codes);
        BoundInsert sectors(connection, u"insert into bankuaidmb values(?,?)"_s);
        for (const QStringList& row : list("sectors", 2)) {
            sectors.row(row);
        }
        BoundInsert(connection,
                    u"insert into tempcanshu(id,xiugaizhutitime,f10url) values(1,?,?)"_s)
            .row({now_, publicF10Pages});
    }

    void fillHeat(Connection& connection) const {
        BoundInsert(connection,
                    u"insert into canshu(today,zidinyinum,yinqingurl) "
                    u"values(?,'30',?)"_s)
            .row({now_, publicSearchPages});
        BoundInsert commodities(connection,
                                u"insert into shopname(shopname,guanzhudu,aboutgegu,"
                                u"adddate) values(?,?,?,?)"_s);
        for (const QStringList& row : list("commodities", 3)) {
            commodities.row(row + QStringList{now_});
        }
    }

    void fillArticle(Connection& connection) const {
        connection.execute(u"insert into tempcanshu(id) values(1)"_s);
    }

    void fillPinyin(Connection& connection) const {
        const Initials initials({});
        BoundInsert readings(connection, u"insert into pingyin values(?,?)"_s);
        for (const QChar character : commonCharacters()) {
            const QString reading = initials.reading(character);
            if (!reading.isEmpty()) {
                readings.row({character, reading});
            }
        }
    }

private:
    QList<QStringList> list(const char* name, qsizetype fields) const {
        return readSeedList(dataFolder_ + u'/' + QString::fromLatin1(name) + u".csv"_s, fields);
    }

    void fillCodes(Connection& connection, const QList<QStringList>& stocks) const {
        const Initials initials(readInitialsExceptions(dataFolder_ + u"/initials.csv"_s));
        BoundInsert codes(connection,
                          u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) "
                          u"values(?,?,?,?,?)"_s);
        for (const QStringList& row : stocks) {
            codes.row({row[0], row[0].mid(2), row[1], initials.of(row[1]), now_});
        }
    }

    void fillThemes(Connection& connection, const QList<QStringList>& stocks) const {
        QHash<QString, QString> names;
        for (const QStringList& row : stocks) {
            names.insert(row[0], row[1]);
        }
        BoundInsert members(connection,
                            u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,xiangguandu,"
                            u"guanzhudu) values(?,?,?,?,?,?)"_s);
        for (const QStringList& row : list("themes", 4)) {
            members.row({row[0], row[1], names.value(row[1]), now_, row[2], row[3]});
        }
    }

    // The two levels of GB 2312, which hold the characters that names are made of.
    static QString commonCharacters() {
        QByteArray codes;
        for (int high = 0xB0; high <= 0xF7; ++high) {
            for (int low = 0xA1; low <= 0xFE; ++low) {
                codes.append(static_cast<char>(high)).append(static_cast<char>(low));
            }
        }
        return textFromGbk(codes);
    }

    QString dataFolder_;
    QString now_;
};

// Fails where a file of the name has come to be there meanwhile.
void makeSeeded(const StoreFile& store, Schema schema,
                const std::function<void(Connection&)>& fill) {
    makeStore(store.path, [&](const QString& path) {
        createStore(path, store.key, schemaText(schema));
        Connection connection(path, store.key);
        Transaction transaction(connection);
        fill(connection);
        transaction.commit();
    });
}

}  // namespace

QString schemaText(Schema schema) {
    loadSchemaResource();
    static const QHash<Schema, QString> names = {{Schema::main, u"main"_s},
                                                 {Schema::heat, u"heat"_s},
                                                 {Schema::article, u"article"_s},
                                                 {Schema::pinyin, u"pinyin"_s},
                                                 {Schema::backup, u"backup"_s}};
    QFile file(u":/schema/%1.sql"_s.arg(names.value(schema)));
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("a schema is missing from the program");
    }
    return QString::fromUtf8(file.readAll());
}

QStringList tablesOf(Schema schema) {
    static const QRegularExpression made(u"^create table (\\w+)"_s,
                                         QRegularExpression::MultilineOption);
    QStringList tables;
    for (const QRegularExpressionMatch& table : made.globalMatch(schemaText(schema))) {
        tables << table.captured(1);
    }
    return tables;
}

QStringList tablesIn(Connection& store) {
    QStringList tables;
    const QString named =
        u"select name from sqlite_master where type='table' and substr(name,1,7)!='sqlite_'"_s;
    for (Recordset row(store, named); !row.atEnd(); row.moveNext()) {
        tables << row.value(0).toText();
    }
    return tables;
}

QStringList prepareStores(const QString& folder, const QString& dataFolder, const QDateTime& now) {
    const Stores stores = storesIn(applicationFolder(folder));
    const Seeds seeds(dataFolder, now);
    struct Step {
        StoreFile store;
        Schema schema;
        std::function<void(Connection&)> fill;
    };
    const Step steps[] = {
        {stores.main, Schema::main, [&](Connection& store) { seeds.fillMain(store); }},
        {stores.heat, Schema::heat, [&](Connection& store) { seeds.fillHeat(store); }},
        {stores.article, Schema::article, [&](Connection& store) { seeds.fillArticle(store); }},
        {stores.pinyin, Schema::pinyin, [&](Connection& store) { seeds.fillPinyin(store); }},
        {stores.backupTemplate, Schema::backup, [](Connection&) {}},
    };
    QStringList made;
    for (const Step& step : steps) {
        if (!QFileInfo::exists(step.store.path)) {
            makeSeeded(step.store, step.schema, step.fill);
            made << QFileInfo(step.store.path).fileName();
        }
    }
    return made;
}

}  // namespace guanchao
