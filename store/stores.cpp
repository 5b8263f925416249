#include "store/stores.h"

#include "platform/fixed_folders.h"
#include "store/keys.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

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
    stores.firstHistory = {fixedPath(FixedPlace::firstHistory), {}};
    stores.secondHistory = {fixedPath(FixedPlace::secondHistory), {}};
    stores.heat = {yingyongmulu + u"caijiqi.mzdat"_s, xiezhongzi(heatSeed)};
    const QString articleKey = xiezhongzi(articleSeed);
    stores.article = {yingyongmulu + u"wenzhang.mzdat"_s, articleKey};
    stores.pinyin = {yingyongmulu + u"py.mzdat"_s, articleKey};
    stores.backupKey = articleKey;
    stores.backupTemplate = {yingyongmulu + u"yzhutibackup.mzdat"_s, stores.backupKey};
    return stores;
}

}  // namespace guanchao
