#include "utilities/diagnosed_settings.h"

#include <QGuiApplication>
#include <QScreen>
#include <optional>

#include "base/activity.h"
#include "collector/collector_settings.h"
#include "frame/looks.h"
#include "research/history_desk.h"
#include "services/practice.h"
#include "services/services_file.h"
#include "store/failure.h"
#include "utilities/diagnosis.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString screenLine(const QScreen& screen) {
    const QSize size = screen.size();
    return u"屏幕 %1x%2，比例 %3，每英寸 %4 点"_s.arg(size.width())
        .arg(size.height())
        .arg(screen.devicePixelRatio())
        .arg(screen.logicalDotsPerInch());
}

QString looksLine(const QString& iniPath) {
    const LooksChoice looks = keptLooks(iniPath);
    const QString colours = looks.colours == ColourChoice::desktop ? u"随桌面"_s
                            : looks.colours == ColourChoice::dark  ? u"深色"_s
                                                                   : u"浅色"_s;
    const QString shown = shownSheet() == Sheet::dark ? u"深色"_s : u"浅色"_s;
    return u"外观 %1（现在 %2），字号 %3"_s.arg(colours, shown).arg(looks.points);
}

QString collectorLine(const CollectorSettings& it) {
    constexpr double second = 1000;
    return u"采集：间隔 %1 到 %2 秒，限时 %3 秒，重试 %4 次，"_s.arg(it.pause / second)
               .arg((it.pause + it.randomPause) / second)
               .arg(it.timeoutSeconds)
               .arg(it.retries.size()) +
           (it.giveUpAfter > 0 ? u"接连 %1 页读不到就结束"_s.arg(it.giveUpAfter)
                               : u"读不到也不提前结束"_s);
}

// A search without a time of its own has the collector's, as long as that can be read.
QString serviceLineOf(ServiceEntry entry, const std::optional<CollectorSettings>& collector) {
    if (entry.purpose == u"search"_s && entry.service.timeoutSeconds == 0 && collector) {
        entry.service.timeoutSeconds = collector->timeoutSeconds;
    }
    return serviceLine(entry);
}

}  // namespace

QStringList settingLines(const Environment& environment) {
    QStringList lines = {u"显示 "_s + QGuiApplication::platformName()};
    for (const QScreen* it : QGuiApplication::screens()) {
        lines << screenLine(*it);
    }
    const HistoryDesk& history = environment.historyDesk;
    lines << looksLine(environment.interfaceIniPath()) << marketWords(environment.services)
          << u"历史行情 %1 年，每天自己更新：%2"_s.arg(history.years())
                 .arg(history.updatesByItself() ? u"是"_s : u"否"_s);
    std::optional<CollectorSettings> collector;
    try {
        collector = readCollectorSettings(environment.applicationFolder + u"caijiqi.ini"_s);
        lines << collectorLine(*collector);
    } catch (const OperationError& failure) {
        lines << u"采集："_s + loggedReason(failure);
    }
    if (environment.servicesFile.inFile() != environment.services) {
        lines
            << u"services.ini 在软件运行中被改过，下面这些下次启动才生效；现在用的，看网站的应答"_s;
    }
    for (const ServiceEntry& it : environment.servicesFile.entries()) {
        lines << serviceLineOf(it, collector);
    }
    const qsizetype unread = environment.services.complaints.size();
    return unread == 0 ? lines : lines << u"services.ini 里有 %1 处看不懂"_s.arg(unread);
}

}  // namespace guanchao
