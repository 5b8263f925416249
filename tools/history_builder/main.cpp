// history_builder [--lots|--shares] FIRST SECOND DAYS [THEMES.csv]: makes the two history databases
// from day data, or adds to them the days that they lack. docs/history.md tells the files. Exit
// codes: 0 done, 1 failed, 2 bad arguments.
#include <QCoreApplication>
#include <QTextStream>

#include "research/history_store.h"
#include "tools/history_builder/build_progress.h"
#include "tools/history_builder/builder_failure.h"
#include "tools/history_builder/day_source.h"
#include "tools/history_builder/theme_members.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<VolumeUnit> takeUnit(QStringList& arguments) {
    if (arguments.removeAll(u"--lots"_s) > 0) {
        return VolumeUnit::lots;
    }
    return arguments.removeAll(u"--shares"_s) > 0 ? std::optional(VolumeUnit::shares)
                                                  : std::nullopt;
}

QString resultWords(const AddedDays& days, const SkippedRows& skipped) {
    QStringList words = {u"新增 %1 条日线"_s.arg(days.added)};
    const auto add = [&](qint64 count, const QString& text) {
        if (count > 0) {
            words << text.arg(count);
        }
    };
    add(days.rows - days.added - days.withoutFormerClose, u"已有 %1 条"_s);
    add(skipped.halted, u"略过停牌的 %1 行（没有价格或成交量）"_s);
    add(skipped.beijing, u"略过北交所的 %1 行"_s);
    add(skipped.otherKinds, u"略过股票和指数以外的 %1 行（基金、债券、B 股）"_s);
    add(skipped.future, u"略过今天以后的 %1 行"_s);
    add(days.withoutFormerClose, u"略过没有前收盘的 %1 行（每只股票最早的一天）"_s);
    return words.join(u"，"_s);
}

void build(const QStringList& arguments, std::optional<VolumeUnit> unit) {
    DaySource source(arguments[3], unit, QDate::currentDate());
    SkippedRows skippedThemes;
    QList<ThemeMember> themes;
    if (arguments.size() == 5) {
        themes = readThemeMembers(arguments[4], skippedThemes);
    }
    BuildProgress progress;
    source.meanwhile = [&](qint64 bytes, qint64 ofBytes) { progress.show(bytes, ofBytes); };
    const ReadDays read = [&](const TakeDay& take) {
        source.read([&](const DayRow& row) {
            progress.tookRow();
            take(row);
        });
        QTextStream(stderr) << u"正在写入最后一批并建立索引……"_s << '\n';
    };
    const AddedDays added = readIntoHistory({arguments[1], arguments[2]}, read, themes);
    QTextStream out(stdout);
    out << resultWords(added, source.skipped()) << '\n';
    if (skippedThemes.beijing > 0) {
        out << u"主题里略过北交所的 %1 行"_s.arg(skippedThemes.beijing) << '\n';
    }
    if (arguments.size() == 5 && themes.isEmpty()) {
        out << u"主题文件里没有主题，库里的主题没有改动"_s << '\n';
    }
}

}  // namespace

}  // namespace guanchao

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    const std::optional<guanchao::VolumeUnit> unit = guanchao::takeUnit(arguments);
    if (arguments.size() != 4 && arguments.size() != 5) {
        QTextStream(stderr) << QStringLiteral(
            "用法：history_builder [--lots|--shares] 第一个库 第二个库 日线 [主题.csv]\n"
            "日线是一个 .csv 或 .day 文件，或者放着这些文件的目录\n"
            "--lots：成交量的单位是手；--shares：成交量的单位是股\n");
        return 2;
    }
    const QString fault = guanchao::faultOfPlaces({arguments[1], arguments[2]}, arguments[3]);
    if (!fault.isEmpty()) {
        QTextStream(stderr) << fault << '\n';
        return 2;
    }
    guanchao::keepSortsOutOfMemory();
    try {
        guanchao::build(arguments, unit);
    } catch (const std::exception& failure) {
        QTextStream(stderr) << guanchao::builderFailure(failure) << '\n';
        return 1;
    }
    return 0;
}
