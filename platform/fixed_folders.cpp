#include "platform/fixed_folders.h"

#include <QDir>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString driveD(const QString& path) {
#ifdef Q_OS_WIN
    return u"D:/"_s + path;
#else
    return QDir::homePath() + u'/' + path;
#endif
}

}  // namespace

QString fixedPath(FixedPlace place) {
    switch (place) {
        case FixedPlace::exportFolder:
            return driveD(u"导出主题/"_s);
        case FixedPlace::firstHistory:
            return driveD(u"听涛阁/hangqing2006-2017dan.db3"_s);
        case FixedPlace::secondHistory:
            return driveD(u"听涛阁/hangqing2006-2017.db3"_s);
        case FixedPlace::maintenanceStore:
            return driveD(u"dzhzhuti/dzhzhuti2.db3"_s);
    }
    return {};
}

}  // namespace guanchao
