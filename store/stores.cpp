#include "store/stores.h"

#include <QDir>
#include <QFileInfo>

#include "platform/home_places.h"
#include "store/keys.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A practice folder has its own, so that made-up days never lie among real ones.
QString historyPath(const QString& yingyongmulu, HomePlace place) {
    const QString path = homePath(place);
    const QFileInfo own(yingyongmulu + historyFolder + QFileInfo(path).fileName());
    return own.dir().exists() ? own.filePath() : path;
}

}  // namespace

QString applicationFolder(const QString& programFolder) {
    QString folder = programFolder;
    while (folder.endsWith(u'/')) {
        folder.chop(1);
    }
    return folder + u'/';
}

Stores storesIn(const QString& yingyongmulu) {
    Stores stores;
    stores.main = {yingyongmulu + u"dzhzhuti.mzdat"_s, {}};
    stores.firstHistory = {historyPath(yingyongmulu, HomePlace::firstHistory), {}};
    stores.secondHistory = {historyPath(yingyongmulu, HomePlace::secondHistory), {}};
    stores.heat = {yingyongmulu + u"caijiqi.mzdat"_s, xiezhongzi(heatSeed)};
    const QString articleKey = xiezhongzi(articleSeed);
    stores.article = {yingyongmulu + u"wenzhang.mzdat"_s, articleKey};
    stores.pinyin = {yingyongmulu + u"py.mzdat"_s, articleKey};
    stores.backupKey = articleKey;
    stores.backupTemplate = {yingyongmulu + u"yzhutibackup.mzdat"_s, stores.backupKey};
    return stores;
}

}  // namespace guanchao
