#include "utilities/diagnosed_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStorageInfo>
#include <QSysInfo>
#include <QThread>

#include "base/log_words.h"
#include "base/short_amounts.h"
#include "store/store_examination.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList ownFolders = {u"备份"_s,   u"草稿"_s, u"撤消"_s,
                                u"自选股"_s, u"down"_s, u"听涛阁"_s};
const QStringList programs = {u"guanchaotai"_s, u"guanchaotai-practice"_s, u"caijiqi"_s,
                              u"libguanchao_browser.so"_s, u"软件使用说明.html"_s};

QString timeWords(const QFileInfo& file) {
    return file.lastModified().toString(u"yyyy-MM-dd hh:mm"_s);
}

QString firstLineOf(const QString& path, const QByteArray& beginning = {}) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(beginning)) {
            return loggable(QString::fromUtf8(line.mid(beginning.size())));
        }
    }
    return {};
}

// As the session tells it.
QString variable(const char* name) {
    const QString value = qEnvironmentVariable(name).left(40);
    return value.isEmpty() ? u"未知"_s : u' ' + value;
}

QString debianWords() {
    const QString version = firstLineOf(u"/etc/debian_version"_s);
    return version.isEmpty() ? QString() : u"，Debian 版本 "_s + version;
}

QString memoryWords() {
    const QString kilobytes = firstLineOf(u"/proc/meminfo"_s, "MemTotal:").section(u' ', 0, 0);
    const qint64 bytes = kilobytes.toLongLong() * 1024;
    return bytes > 0 ? sizeWords(bytes) : u"大小未知"_s;
}

struct Amount {
    int files = 0;
    qint64 bytes = 0;

    void add(const QFileInfo& file) {
        ++files;
        bytes += file.size();
    }
    QString words() const { return u"%1 个文件，"_s.arg(files) + sizeWords(bytes); }
};

Amount amountIn(const QString& folder) {
    Amount amount;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        amount.add(files.nextFileInfo());
    }
    return amount;
}

QString fileLine(const QFileInfo& file) {
    const QString refused = file.isWritable() ? QString() : u"，不能写入"_s;
    return file.fileName() + u"　"_s + sizeWords(file.size()) + u"，"_s + timeWords(file) + refused;
}

QString diskLine(const QString& path) {
    const QStorageInfo disk(path);
    return u"磁盘 "_s + QString::fromLatin1(disk.fileSystemType()) + u"，共 "_s +
           sizeWords(disk.bytesTotal()) + u"，剩 "_s + sizeWords(disk.bytesAvailable()) +
           (QFileInfo(path).isWritable() ? QString() : u"，应用文件夹不能写入"_s);
}

QStringList tableLines(const ExaminedStore& found) {
    QStringList tables;
    for (const ExaminedTable& it : found.tables) {
        tables << it.name + u' ' + QString::number(it.rows);
    }
    if (found.stockTables > 0) {
        tables << u"个股表 %1 个"_s.arg(found.stockTables);
    }
    if (found.otherTables > 0) {
        tables << u"别的表 %1 个"_s.arg(found.otherTables);
    }
    return tables.isEmpty() ? QStringList()
                            : QStringList{u"　各表的行数："_s + tables.join(u"，"_s)};
}

}  // namespace

QStringList systemLines() {
    return {QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion(),
            u"Qt "_s + QString::fromLatin1(qVersion()) + u"，"_s + storeLibraryWords(),
            QSysInfo::prettyProductName() + debianWords(),
            u"内核 "_s + QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion() + u"，"_s +
                QSysInfo::currentCpuArchitecture(),
            u"处理器 %1 个，内存 "_s.arg(QThread::idealThreadCount()) + memoryWords(),
            u"桌面环境"_s + variable("XDG_CURRENT_DESKTOP") + u"，会话类型"_s +
                variable("XDG_SESSION_TYPE") + u"，语言"_s + variable("LANG")};
}

QStringList folderLines(const QString& path) {
    QStringList lines = {diskLine(path)};
    Amount others;
    const QDir::Filters all = QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QFileInfo& it : QDir(path).entryInfoList(all, QDir::Name)) {
        if (it.isDir()) {
            const Amount amount = amountIn(it.filePath());
            if (ownFolders.contains(it.fileName())) {
                lines << it.fileName() + u"/　"_s + amount.words();
            } else {
                others.files += amount.files;
                others.bytes += amount.bytes;
            }
        } else if (isOwnFile(it.fileName()) || programs.contains(it.fileName())) {
            lines << fileLine(it);
        } else {
            others.add(it);
        }
    }
    return lines << u"其余　"_s + others.words();
}

qint64 DiagnosedStore::bytes() const {
    return QFileInfo(file.path).size();
}

QList<DiagnosedStore> diagnosedStores(const Stores& stores) {
    return {{u"主库"_s, stores.main},
            {u"文章库"_s, stores.article},
            {u"采集库"_s, stores.heat},
            {u"拼音库"_s, stores.pinyin},
            {u"空白主题库"_s, stores.backupTemplate},
            {u"历史行情库一"_s, stores.firstHistory, true},
            {u"历史行情库二"_s, stores.secondHistory, true}};
}

QStringList storeLines(const DiagnosedStore& store, const std::stop_token& stop,
                       const std::function<void(qint64 bytes)>& show) {
    const ExaminedStore found = examineStore(store.file, stop, show);
    const QStringList faults =
        found.faults.isEmpty() ? QStringList() : QStringList{u"　检查出来的："_s + found.faults};
    return QStringList{storeLine(store, found.state)} + faults + tableLines(found);
}

QString storeLine(const DiagnosedStore& store, const QString& state) {
    const QFileInfo file(store.file.path);
    const QString line = store.name + u' ' + file.fileName() + u"："_s + state;
    return file.exists() ? line + u"　"_s + sizeWords(file.size()) + u"，"_s + timeWords(file)
                         : line;
}

}  // namespace guanchao
