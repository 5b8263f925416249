#include "tests/support/test_stores.h"

#include <QDir>
#include <QFileInfo>

#include "base/values.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString TestStores::folderTemplate() {
    const QFileInfo memory(u"/dev/shm"_s);
    const QString parent = memory.isWritable() ? memory.filePath() : QDir::tempPath();
    return parent + u"/guanchao's-test-XXXXXX"_s;
}

TestStores::TestStores() {
    stores = storesIn(folder());
    for (StoreFile* history : {&stores.firstHistory, &stores.secondHistory}) {
        history->path = folder() + QFileInfo(history->path).fileName();
    }
    createStore(stores.main.path, stores.main.key, schemaText(Schema::main));
    createStore(stores.heat.path, stores.heat.key, schemaText(Schema::heat));
    createStore(stores.article.path, stores.article.key, schemaText(Schema::article));
    createStore(stores.backupTemplate.path, stores.backupTemplate.key, schemaText(Schema::backup));
    stores.heat.open().execute(u"insert into canshu(mainisrun) values(1)"_s);
    run(
        {u"insert into tempcanshu(id,xiugaizhutitime,hqtime) values(1,'2026-11-01 08:00:00',"
         u"'2026-11-02 15:00:00')"_s});
}

void TestStores::run(const QStringList& statements) {
    Connection connection = stores.main.open();
    for (const QString& statement : statements) {
        connection.execute(statement);
    }
}

QStringList TestStores::rows(const StoreFile& store, const QString& query) {
    Connection connection = store.open();
    QStringList rows;
    for (Recordset result(connection, query); !result.atEnd(); result.moveNext()) {
        QStringList values;
        for (int field = 0; field < result.fieldCount(); ++field) {
            const Value& value = result.value(field);
            values << (value.isNull() ? u"null"_s : value.toText());
        }
        rows << values.join(u'|');
    }
    return rows;
}

void TestStores::addCode(const QString& dm, const QString& jc, double sp, double zhangfu) {
    run({u"insert into dmb(dm,numdm,jc,shenmu,sp,zhangfu) values('%1','%2','%3','',%4,%5)"_s.arg(
        dm, dm.sliced(2), jc, QString::number(sp), QString::number(zhangfu))});
}

void TestStores::addMember(const QString& zhutiname, const QString& dm, int guanzhudu) {
    run(
        {u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,guanzhudu) values(%1,'%2','',"
         u"'2026-10-01 00:00:00',%3)"_s.arg(quoted(zhutiname), dm, QString::number(guanzhudu))});
}

void TestStores::addMembers(const QString& zhutiname, const QStringList& dms, int guanzhudu) {
    for (const QString& dm : dms) {
        addMember(zhutiname, dm, guanzhudu);
    }
}

void TestStores::refuse(const StoreFile& store, const QString& statements) {
    store.open().execute(u"create trigger refuse before "_s + statements +
                         u" begin select raise(abort,'no'); end"_s);
}

Connection held(const StoreFile& store, const QString& how) {
    Connection other = store.open();
    other.execute(u"begin "_s + how);
    return other;
}

void TestStores::addArticle(const QString& values) {
    stores.article.open().execute(
        u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values("_s + values +
        u")"_s);
}

}  // namespace guanchao
