// history_builder FIRST SECOND DAYS.csv [THEMES.csv]: makes the two history databases from day
// data, or adds to them the days that they lack. docs/history.md tells the files. Exit codes: 0
// done, 1 failed, 2 bad arguments.
#include <QCoreApplication>
#include <QTextStream>

#include "research/history_store.h"
#include "tools/history_builder/day_rows.h"

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() != 4 && arguments.size() != 5) {
        errors << QStringLiteral("用法：history_builder 第一个库 第二个库 日线.csv [主题.csv]\n");
        return 2;
    }
    try {
        std::optional<QList<guanchao::ThemeMember>> themes;
        if (arguments.size() == 5) {
            themes = guanchao::readThemeMembers(arguments[4]);
        }
        const int added = guanchao::addToHistory({arguments[1], arguments[2]},
                                                 guanchao::readDayRows(arguments[3]), themes);
        QTextStream(stdout) << QStringLiteral("新增 %1 条日线\n").arg(added);
    } catch (const std::exception& failure) {
        errors << failure.what() << '\n';
        return 1;
    }
    return 0;
}
