#include "exchange/earlier_folder.h"

#include <QFileInfo>
#include <algorithm>

#include "base/activity.h"
#include "exchange/user_files.h"
#include "platform/process_lock.h"
#include "services/services.h"
#include "store/prepared_stores.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A store of an earlier program gets these with their first row.
const QStringList laterTables = {u"tuishi"_s,       u"zixuanzu"_s,   u"zixuanzugu"_s,
                                 u"zixuanshunxu"_s, u"gegubeizhu"_s, u"zhutiriji"_s,
                                 u"fupanbeizhu"_s};

const QString another = u"请另选一个文件夹，例如那里的“备份”里的一份。"_s;

QStringList without(QStringList names, const QStringList& others) {
    names.removeIf([&others](const QString& it) { return others.contains(it); });
    return names;
}

bool isSameFolder(const QString& one, const QString& other) {
    return QFileInfo(one).canonicalFilePath() == QFileInfo(other).canonicalFilePath();
}

bool hasProgramRunning(const QString& folder) {
    const QString lock = folder + lockOfProgram;
    return QFileInfo::exists(lock) && ProcessLock(lock).take() == ProcessLock::Outcome::held;
}

// Of the folder, without a look at its stores.
QString refusalOf(const QString& own, const QString& path) {
    if (isSameFolder(own, path)) {
        return u"这就是现在用的文件夹，不用接管。"_s;
    }
    if (readServices(path + u"services.ini"_s).isPractice) {
        return u"这是练习用的文件夹，行情是编的，不能接管。要留下在练习里做的主题，请在练习的软件里"
               u"用"
               u"“数据 / 导出数据”，再在这里用“数据 / 导入主题”。"_s;
    }
    if (hasProgramRunning(path)) {
        return u"那个文件夹里的观潮台正在运行，请先退出它。"_s;
    }
    return {};
}

// Of its tables: which program has made them.
void judgeTables(const StoreFile& main, EarlierFolder& folder) {
    Connection store = main.open();
    const QStringList found = tablesIn(store);
    const QStringList missing = without(tablesOf(Schema::main), found);
    const QStringList needed = without(missing, laterTables);
    const QStringList strange = without(found, tablesOf(Schema::main));
    if (!needed.isEmpty()) {
        folder.refusal = u"它的主题库里缺少表 "_s + needed.join(u'、') +
                         u"，不是观潮台的主题库，或者已经损坏。"_s + another;
    } else if (!strange.isEmpty()) {
        folder.age = u"主题库里有这个版本不认识的表（"_s + strange.join(u'、') +
                     u"），可能来自更新的版本；它们原样带过来。"_s;
    } else {
        folder.age = missing.isEmpty() ? u"主题库和这个版本的一样。"_s
                                       : u"主题库是较早的版本建的，缺的表用到时自动建立。"_s;
    }
}

void judgeStores(const Stores& stores, EarlierFolder& folder) {
    const Stores there = storesOfCopy(stores, folder.path);
    for (const CopiedStore store : allCopied) {
        if (QFileInfo::exists(fileOf(there, store).path)) {
            folder.contents[store] = contentOf(store, fileOf(there, store), Look::quick);
        }
    }
    if (!folder.contents.contains(CopiedStore::main)) {
        folder.refusal = u"这个文件夹里没有 "_s + QFileInfo(there.main.path).fileName() +
                         u"，不是观潮台的文件夹。请选里面有它的文件夹。"_s;
    } else if (!folder.contents[CopiedStore::main].isReadable()) {
        folder.refusal = u"它的主题库"_s +
                         folder.contents[CopiedStore::main].words(CopiedStore::main) + u"。"_s +
                         another;
    } else {
        judgeTables(there.main, folder);
    }
}

// Of the stores that are here, which are copied before they go.
QString refusalOfHeld(const Stores& stores) {
    const auto held = std::ranges::find_if(
        allCopied, [&stores](CopiedStore it) { return isHeld(fileOf(stores, it)); });
    return held == allCopied.end() ? QString()
                                   : u"现在的"_s + wordOf(*held) +
                                         u"正被其他程序占用，请等它用完，再点“接管文件夹”。"_s;
}

}  // namespace

CopyChoice EarlierFolder::choice() const {
    CopyChoice choice{{}, {}, path};
    for (const auto& [store, content] : contents.asKeyValueRange()) {
        if (content.isReadable()) {
            choice.stores << store;
        } else {
            choice.leftBehind << wordOf(store) + content.words(store);
        }
    }
    return choice;
}

EarlierFolder lookIntoFolder(const Stores& stores, const QString& own, const QString& path) {
    const Activity activity(u"查看要接管的文件夹"_s);
    EarlierFolder folder{applicationFolder(path), {}, {}, {}};
    folder.refusal = refusalOf(own, folder.path);
    if (folder.refusal.isEmpty()) {
        judgeStores(stores, folder);
    }
    if (folder.refusal.isEmpty()) {
        folder.refusal = refusalOfHeld(stores);
    }
    return folder;
}

QString takeOverQuestion(const EarlierFolder& folder, const StoreContents& present) {
    const QList<CopiedStore> taken = folder.choice().stores;
    QStringList parts;
    for (const CopiedStore store : allCopied) {
        const QString here = u"现在有："_s + present[store].words(store);
        const QString there =
            folder.contents.contains(store) ? folder.contents[store].words(store) : u"没有这个库"_s;
        parts << wordOf(store) + (taken.contains(store) ? QString() : u"（不换）"_s) + u'\n' +
                     here + u"\n那里有："_s + there;
    }
    const QStringList files = userFileWords(folder.path);
    parts << (files.isEmpty() ? u"那里没有设置、条件和草稿。"_s
                              : u"也带过来："_s + files.join(u'、') + u'。');
    return u"要接管文件夹 "_s + folder.path + u" 吗？\n"_s + folder.age + u"\n\n"_s +
           parts.join(u"\n\n"_s) +
           u"\n\n那里的文件一个也不动。现在的数据先另存一份，可以在“数据 / 恢复…”里换回来。"
           u"其他窗口会关闭。"_s;
}

}  // namespace guanchao
