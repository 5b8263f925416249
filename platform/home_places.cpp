#include "platform/home_places.h"

#include <QDir>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString inHome(HomePlace place) {
    switch (place) {
        case HomePlace::exportFolder:
            return u"导出主题/"_s;
        case HomePlace::firstHistory:
            return historyFolder + u"hangqing2006-2017dan.db3"_s;
        case HomePlace::secondHistory:
            return historyFolder + u"hangqing2006-2017.db3"_s;
        case HomePlace::maintenanceStore:
            return u"dzhzhuti/dzhzhuti2.db3"_s;
    }
    return {};
}

}  // namespace

QString homePath(HomePlace place) {
    return QDir::homePath() + u'/' + inHome(place);
}

}  // namespace guanchao
