// What users have written and what only their program knows, in every column of every store and in
// the files beside them, and the look for it.
#pragma once

#include "store/recordset.h"
#include "tests/support/test_stores.h"

namespace guanchao {

inline const QString secretWords = u"秘密 mimi，甲"_s;

// As failures quote them.
inline QStringList wordsAround(const QString& secret) {
    QStringList words = {u"主题“%1”已经有了。"_s,
                         u"文件 /home/%1/%1.txt 不是文本文件，请换一个。"_s,
                         u"不是数字：%1"_s,
                         u"代码表里没有 %1"_s,
                         u"读不了 http://u:%1@host/%1?key=%1 ：没有应答"_s,
                         u"caijiqi.ini 的 [%1] 里 %1=%1：不是数"_s,
                         u"near \"%1\": syntax error"_s,
                         u"无法写入 ~/%1（磁盘已满）。请腾出空间后再做。"_s};
    return words.replaceInStrings(u"%1"_s, secret);
}

inline void plantInStore(const StoreFile& file) {
    Connection store = file.open();
    const QString words = u'\'' + secretWords + u'\'';
    for (Recordset tables(store, u"select name from sqlite_master where type='table'"_s);
         !tables.atEnd(); tables.moveNext()) {
        const QString table = tables.value(0).toText();
        QStringList values;
        for (Recordset columns(store, u"pragma table_info(%1)"_s.arg(table)); !columns.atEnd();
             columns.moveNext()) {
            const bool isNumber = columns.value(u"pk"_s).toInteger() > 0;
            values << (isNumber ? u"null"_s : words);
        }
        store.execute(u"insert into %1 values(%2)"_s.arg(table, values.join(u',')));
    }
    store.execute(u"create table \"%1\" (a)"_s.arg(secretWords));
}

inline void plantSecrets(TestStores& store) {
    for (const StoreFile& it : {store.stores.main, store.stores.article, store.stores.heat,
                                store.stores.pinyin, store.stores.backupTemplate}) {
        if (QFileInfo::exists(it.path)) {
            plantInStore(it);
        }
    }
    const QString folder = store.folder();
    const QByteArray words = secretWords.toUtf8();
    const QByteArray resting =
        "history factors fundamentals boards search stocklist chart stockpage sitepage newspage";
    const QByteArray address = "http://yong:" + words + "@127.0.0.1:1/" + words;
    writeFile(folder + u"services.ini"_s,
              "[quote]\nkind=sina\nhost=" + address + "\nreferer=" + words + "\n[" + words +
                  "]\n[" + QByteArray(resting).replace(" ", "]\nuse=0\n[") + "]\nuse=0\n");
    writeFile(folder + u"caijiqi.ini"_s, "[search]\nonePeriod=" + words + "\n");
    writeFile(folder + u"界面.ini"_s, "[Form12]\ncondition=" + words + "\n");
    const QStringList folders = {u"草稿/"_s, u"自选股/"_s, QString(), secretWords + u'/'};
    for (const QString& it : folders) {
        writeFile(folder + it + secretWords + u".txt"_s, words);
    }
}

// Those that turn up in a text: words, names of files, keys.
inline QStringList secretsIn(const QString& text, const Stores& stores) {
    QStringList found = {u"秘密"_s, u"mimi"_s, u"yong"_s, stores.heat.key, stores.article.key};
    found.removeIf([&](const QString& it) { return !text.contains(it); });
    return found;
}

}  // namespace guanchao
