// What users have written and what only their program knows, in every column of every store and in
// the files beside them, and the look for it.
#pragma once

#include "store/recordset.h"
#include "tests/support/files.h"
#include "tests/support/test_stores.h"

namespace guanchao {

inline const QString secretWords = QStringLiteral("秘密 mimi，甲");

// As failures quote them.
inline QStringList wordsAround(const QString& secret) {
    const QString forms[] = {QStringLiteral("主题“%1”已经有了。"),
                             QStringLiteral("文件 /home/%1/%1.txt 不是文本文件，请换一个。"),
                             QStringLiteral("不是数字：%1"),
                             QStringLiteral("代码表里没有 %1"),
                             QStringLiteral("读不了 http://u:%1@host/%1?key=%1 ：没有应答"),
                             QStringLiteral("caijiqi.ini 的 [%1] 里 %1=%1：不是数"),
                             QStringLiteral("near \"%1\": syntax error"),
                             QStringLiteral("无法写入 ~/%1（磁盘已满）。请腾出空间后再做。")};
    QStringList words;
    for (const QString& form : forms) {
        words << QString(form).replace(QStringLiteral("%1"), secret);
    }
    return words;
}

inline void plantInStore(const StoreFile& file) {
    Connection store = file.open();
    const QString words = u'\'' + secretWords + u'\'';
    for (Recordset tables(store,
                          QStringLiteral("select name from sqlite_master where type='table'"));
         !tables.atEnd(); tables.moveNext()) {
        const QString table = tables.value(0).toText();
        QStringList values;
        for (Recordset columns(store, QStringLiteral("pragma table_info(%1)").arg(table));
             !columns.atEnd(); columns.moveNext()) {
            const bool isNumber = columns.value(QStringLiteral("pk")).toInteger() > 0;
            values << (isNumber ? QStringLiteral("null") : words);
        }
        store.execute(QStringLiteral("insert into %1 values(%2)").arg(table, values.join(u',')));
    }
    store.execute(QStringLiteral("create table \"%1\" (a)").arg(secretWords));
}

// What is not to be asked.
inline const QStringList restingPurposes =
    QStringLiteral(
        "history factors fundamentals boards search stocklist chart stockpage sitepage "
        "newspage")
        .split(u' ');

inline void plantSecrets(TestStores& store) {
    for (const StoreFile& it : {store.stores.main, store.stores.article, store.stores.heat,
                                store.stores.pinyin, store.stores.backupTemplate}) {
        if (QFileInfo::exists(it.path)) {
            plantInStore(it);
        }
    }
    const QString folder = store.folder();
    const QByteArray words = secretWords.toUtf8();
    const QByteArray address = "http://yong:" + words + "@127.0.0.1:1/" + words;
    writeFile(folder + QStringLiteral("services.ini"),
              "[quote]\nkind=sina\nhost=" + address + "\nreferer=" + words + "\n[" + words +
                  "]\n[" + restingPurposes.join(QStringLiteral("]\nuse=0\n[")).toUtf8() +
                  "]\nuse=0\n");
    writeFile(folder + QStringLiteral("caijiqi.ini"), "[search]\nonePeriod=" + words + "\n");
    writeFile(folder + QStringLiteral("界面.ini"), "[Form12]\ncondition=" + words + "\n");
    const QStringList folders = {QStringLiteral("草稿/"), QStringLiteral("自选股/"), QString(),
                                 secretWords + u'/'};
    for (const QString& it : folders) {
        writeFile(folder + it + secretWords + QStringLiteral(".txt"), words);
    }
}

// Those of the user may be large.
inline void keepHistoriesIn(const QString& folder, Stores& stores) {
    for (StoreFile* it : {&stores.firstHistory, &stores.secondHistory}) {
        it->path = folder + QFileInfo(it->path).fileName();
    }
}

// Those that turn up in a text: words, names of files, keys.
inline QStringList secretsIn(const QString& text, const Stores& stores) {
    const QStringList secrets = {QStringLiteral("秘密"), QStringLiteral("mimi"),
                                 QStringLiteral("yong"), stores.heat.key, stores.article.key};
    QStringList found;
    for (const QString& it : secrets) {
        if (text.contains(it)) {
            found << it;
        }
    }
    return found;
}

}  // namespace guanchao
