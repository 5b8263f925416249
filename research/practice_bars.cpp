#include "research/practice_bars.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include "base/files.h"
#include "base/values.h"
#include "platform/home_places.h"
#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The made-up days take less; a real database is left unread, since its thousands of tables would
// hold up the start.
constexpr qint64 mostBytes = 64 << 20;

bool holdsPracticeBars(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > mostBytes) {
        return false;
    }
    try {
        Connection store(path, {});
        const Recordset marked(store, u"select 1 from SH000001 where fuquanyz="_s +
                                          numberText(practiceIndexFactor) + u" limit 1"_s);
        return !marked.atEnd();
    } catch (const StoreError&) {
        return false;
    }
}

QString freeNameBeside(const QString& path) {
    QString name = path + u".练习"_s;
    for (int number = 2; QFileInfo::exists(name); ++number) {
        name = path + u".练习"_s + QString::number(number);
    }
    return name;
}

QString moveAside(const QString& path) {
    QString aside = freeNameBeside(path);
    QFile file(path);
    if (!file.rename(aside)) {
        throw notWritten(aside, reasonOf(file));
    }
    return aside;
}

}  // namespace

QString movePracticeBarsAside(const Stores& stores) {
    QStringList moved;
    const std::pair<StoreFile, HomePlace> places[] = {
        {stores.firstHistory, HomePlace::firstHistory},
        {stores.secondHistory, HomePlace::secondHistory}};
    for (const auto& [store, place] : places) {
        if (store.path == homePath(place) && holdsPracticeBars(store.path)) {
            moved << moveAside(store.path);
        }
    }
    return moved.isEmpty()
               ? QString()
               : u"历史行情库里是练习行情，不能用来研究真实的主题，已经改名放在一边：\n"_s +
                     moved.join(u'\n');
}

}  // namespace guanchao
