#include "tools/history_builder/builder_failure.h"

#include <QFileInfo>

#include "store/failure.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString orderWords = u"参数的次序是：第一个库 第二个库 日线 [主题.csv]。"_s;

QString realPath(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
}

}  // namespace

QString faultOfPlaces(const HistoryFiles& files, const QString& days) {
    if (realPath(files.first) == realPath(files.second)) {
        return files.first + u"：第一个库和第二个库不能是同一个文件。"_s + orderWords;
    }
    for (const QString& store : {files.first, files.second}) {
        if (realPath(store) == realPath(days)) {
            return store + u"：日线文件不能同时又是库。"_s + orderWords;
        }
        if (QFileInfo(store).isDir()) {
            return store + u"：是目录，不能当作库。"_s + orderWords;
        }
    }
    return {};
}

QString builderFailure(const std::exception& failure) {
    const auto* store = dynamic_cast<const StoreError*>(&failure);
    if (!store) {
        return failureReason(failure);
    }
    switch (store->fault()) {
        case StoreFault::busy:
            return store->path() +
                   u"：正被另一个程序使用，例如观潮台。请等它用完，或者把它关掉，再运行一次。"_s;
        case StoreFault::notADatabase:
            return store->path() + u"：不是 SQLite 数据库，或者加了密码。"_s + orderWords;
        default:
            return store->path() + u"："_s + failureReason(failure);
    }
}

}  // namespace guanchao
