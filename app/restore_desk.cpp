#include "app/restore_desk.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QThreadPool>
#include <utility>

#include "base/activity.h"
#include "base/pause.h"
#include "exchange/code_table_settings.h"
#include "exchange/user_files.h"
#include "frame/open_windows.h"
#include "heat/collector_launch.h"
#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void takePlaceAlone(const Stores& stores, const ReadyStores& ready) {
    if (QThreadPool::globalInstance()->activeThreadCount() > 0) {
        const Activity activity(u"恢复数据"_s, u"现在的数据没有改动。"_s);
        throw OperationError(u"另一个任务正在使用数据，请等它结束后再试。"_s);
    }
    takeTheirPlace(stores, ready);
}

}  // namespace

RestoreDesk::RestoreDesk(Environment& environment, ExchangeRun& run, EndOthers endOthers,
                         std::function<void()> showAnew)
    : environment_(environment),
      run_(run),
      endOthers_(std::move(endOthers)),
      showAnew_(std::move(showAnew)) {}

QCoro::Task<QString> RestoreDesk::restore(CopyChoice choice, std::stop_token stop) {
    const QString inTheWay = co_await obstacle(stop);
    if (!inTheWay.isEmpty()) {
        co_return QString(inTheWay);
    }
    co_await endOthers_(stop);
    co_await untilNothingIsWritten(stop);
    const QScopedValueRollback busy(environment_.globals.hqmang, qint16(1));
    const QString folder = copiesFolder(environment_.applicationFolder);
    const auto job = [stores = environment_.stores, folder, choice,
                      now = environment_.clock.now()](ExchangeWork& work) {
        return prepareRestore(stores, folder, choice, now, work);
    };
    const std::optional<ReadyStores> ready =
        co_await run_.run(choice.activity(), job, stop, choice.logged());
    if (!ready) {
        co_return choice.activity() + u"已停止，现在的数据没有改动。"_s;
    }
    const auto drop = qScopeGuard([&ready] { dropReady(*ready); });
    co_await workersEnded(stop);
    const auto step = [this, &ready] { takePlaceAlone(environment_.stores, *ready); };
    co_await patiently(step, stop);
    environment_.removals.forgetAll();
    showAnew_();
    tellDone(choice, bringSettings(choice, *ready));
    co_return QString();
}

void RestoreDesk::tellDone(const CopyChoice& choice, const QString& settings) const {
    const QString leftBehind = choice.leftBehind.isEmpty()
                                   ? QString()
                                   : u"。那里的"_s + choice.leftBehind.join(u'、') + u"，没有换"_s;
    environment_.dialogs.tellDone(
        (choice.elsewhere.isEmpty() ? u"已恢复"_s : u"已接管"_s) + choice.words() + u" 的"_s +
        wordsOf(choice.stores) + settings + leftBehind +
        u"。\n\n换下来的数据另存了一份，要换回来，再选“数据 / 恢复…”。"_s);
}

// Of a folder of elsewhere, or of a copy of what a takeover has replaced: no other copy has any.
QString RestoreDesk::bringSettings(const CopyChoice& choice, const ReadyStores& ready) const {
    const Activity activity(choice.activity(),
                            u"库已经换好，设置等文件没有带全，原来的文件夹里还有。"_s);
    const QString from = choice.folder(copiesFolder(environment_.applicationFolder));
    const QStringList files = bringUserFiles(from, environment_.applicationFolder, ready.kept);
    if (!choice.elsewhere.isEmpty()) {
        // Who has brought a code table along is not asked for the first start any more.
        CodeTableSettings(environment_.interfaceIniPath()).setRefused();
    }
    if (!files.isEmpty()) {
        return u"，还有 %1 个设置、草稿等文件：%2。设置在下次启动时生效"_s.arg(files.size())
            .arg(files.join(u'、'));
    }
    return userFileWords(from).isEmpty() ? QString() : u"。那里的设置等文件和这里的一样"_s;
}

QCoro::Task<QString> RestoreDesk::obstacle(std::stop_token stop) {
    if (collectorRuns(environment_.processes)) {
        co_return u"采集程序正在运行，请等它结束后再试。"_s;
    }
    const bool closed = co_await environment_.openWindows.closeAll(stop);
    co_return closed ? QString() : u"还有窗口没有关闭，现在的数据没有改动。"_s;
}

// A poll that is under way ends by itself.
QCoro::Task<> RestoreDesk::untilNothingIsWritten(std::stop_token stop) {
    while (environment_.globals.hqmang > 0) {
        co_await pause(betweenLooks, stop);
    }
}

}  // namespace guanchao
