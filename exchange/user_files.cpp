#include "exchange/user_files.h"

#include <QDirIterator>
#include <QFileInfo>

#include "base/files.h"
#include "store/application_folder.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct UserFile {
    QString name;  // in the application folder
    QString words;
};

const UserFile userFiles[] = {
    {u"services.ini"_s, u"行情来源的设置"_s}, {u"caijiqi.ini"_s, u"采集程序的设置"_s},
    {interfaceIni, u"界面的设置"_s},          {u"回测.ini"_s, u"回测规则"_s},
    {u"题材选股.ini"_s, u"题材选股的条件"_s}, {u"题材选股总结.txt"_s, u"题材选股的总结"_s}};
// Of which all files are.
const UserFile userFolders[] = {{u"自选股"_s, u"自选股的文件"_s}, {u"草稿"_s, u"文章草稿"_s}};

// By their paths in `folder`, those of one of its folders.
QStringList filesOf(const QString& folder, const QString& name) {
    QStringList files;
    QDirIterator file(folder + name, QDir::Files, QDirIterator::Subdirectories);
    while (file.hasNext()) {
        files << file.next().mid(folder.size());
    }
    return files;
}

QStringList userFilesIn(const QString& folder) {
    QStringList files;
    for (const UserFile& it : userFiles) {
        if (QFileInfo(folder + it.name).isFile()) {
            files << it.name;
        }
    }
    for (const UserFile& it : userFolders) {
        files << filesOf(folder, it.name);
    }
    return files;
}

void keep(const QString& file, const QString& kept) {
    makeFolder(QFileInfo(kept).path());
    replaceFile(kept, contentOfFile(file));
}

}  // namespace

QStringList userFileWords(const QString& folder) {
    QStringList words;
    for (const UserFile& it : userFiles) {
        if (QFileInfo(folder + it.name).isFile()) {
            words << it.words + u'（' + it.name + u'）';
        }
    }
    for (const UserFile& it : userFolders) {
        if (const qsizetype files = filesOf(folder, it.name).size(); files > 0) {
            words << it.words + u" %1 个"_s.arg(files);
        }
    }
    return words;
}

QStringList bringUserFiles(const QString& from, const QString& own, const QString& kept) {
    QStringList brought;
    for (const QString& name : userFilesIn(from)) {
        const QByteArray content = contentOfFile(from + name);
        const bool isThere = QFileInfo::exists(own + name);
        if (isThere && contentOfFile(own + name) == content) {
            continue;
        }
        if (isThere) {
            keep(own + name, kept + name);
        }
        makeFolder(QFileInfo(own + name).path());
        replaceFile(own + name, content);
        brought << name;
    }
    return brought;
}

}  // namespace guanchao
