#include "collector/collector_program.h"

#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

#include "base/activity.h"
#include "collector/code_table_job.h"
#include "collector/commodities_job.h"
#include "collector/companies_job.h"
#include "collector/themes_job.h"
#include "frame/looks.h"
#include "frame/window_memory.h"
#include "platform/guide.h"
#include "store/failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList jobWords = {collectThemes, collectCompanies, collectCommodities, collectCodes};

// As a second word: what has its row of the day already is collected too.
const QString anewWord = u"--anew"_s;

const QList<RunState> vainStates = {RunState::nothingRead, RunState::hopeless,
                                    RunState::storeRefuses};

}  // namespace

CollectorProgram::CollectorProgram(Application& application) : application_(application) {
    application_.setDialogs(&dialogs_);
    shell_.whenNotOpened([this](const QString& target) { tellNotOpened(target, dialogs_); });
}

int CollectorProgram::run() {
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    word_ = arguments.value(0);
    const bool anew = arguments.mid(1) == QStringList(anewWord);
    if (!jobWords.contains(word_) || (arguments.size() > 1 && !anew)) {
        refuse(u"用法：caijiqi "_s + jobWords.join(u" | "_s) + u" [" + anewWord + u']');
        return 2;
    }
    try {
        begin(anew ? Scope::all : Scope::rest);
    } catch (const std::exception& failure) {
        refuse(failureText(failure));
        return 1;
    }
    Application::exec();
    return vainStates.contains(collection_->state()) ? 3 : 0;
}

void CollectorProgram::begin(Scope scope) {
    const Activity activity(u"开始采集"_s);
    applyLooks(application_, keptLooks(folder_ + interfaceIni));
    order_ = readRunOrder(stores_.heat, clock_);
    lockStore();
    openRun(scope);
}

void CollectorProgram::openRun(Scope scope) {
    settings_ = readCollectorSettings(folder_ + u"caijiqi.ini"_s);
    job_ = makeJob();
    pacing_ = std::make_unique<Pacing>(
        settings_, [this] { return std::uniform_real_distribution<>(0, 1)(random_); });
    collection_ = std::make_unique<Collection>(*job_, stores_.heat, client_, clock_, *pacing_);
    note_.emplace(job_->title(), std::stop_token());
    collection_->begin(scope);
    window_ = std::make_unique<CollectorWindow>(*collection_, dialogs_, application_, clock_,
                                                job_->title());
    window_->ended = [this] { end(); };
    window_->again = [this](Scope wanted) { beginAgain(wanted); };
    window_->help = [this] { openGuide(folder_, u"collector"_s, dialogs_, shell_); };
    QObject::connect(window_.get(), &QDialog::finished, &application_, &QCoreApplication::quit);
    WindowMemory(folder_ + interfaceIni).place(*window_);
    if (order_.windowWanted) {
        window_->show();
    }
    // Inside the event loop, since a run without items ends at once and the program with it.
    QTimer::singleShot(0, window_.get(), [this] { window_->start(); });
}

// On a later day than the run before its rows are those of the later day. Not before the window has
// done with the click: it goes.
void CollectorProgram::beginAgain(Scope scope) {
    QTimer::singleShot(0, &application_, [this, scope] {
        application_.guard([this, scope] {
            const Activity activity(u"再次采集"_s);
            order_ = readRunOrder(stores_.heat, clock_);
            window_.reset();
            openRun(scope);
        });
    });
}

void CollectorProgram::lockStore() {
    switch (lock_.take()) {
        case ProcessLock::Outcome::taken:
            return;
        case ProcessLock::Outcome::held:
            throw OperationError(u"采集程序已在运行，请先停止采集，关闭采集程序。"_s);
        case ProcessLock::Outcome::notWritable:
            throw OperationError(u"不能写入锁文件 "_s + lock_.path());
    }
}

// A box where no window is wanted would wait for nobody.
void CollectorProgram::refuse(const QString& reason) {
    QTextStream(stderr) << reason << '\n';
    if (order_.windowWanted) {
        dialogs_.tell(reason, programName);
        Application::setQuitOnLastWindowClosed(true);
        Application::exec();
    }
}

std::unique_ptr<Job> CollectorProgram::makeJob() {
    const QList<Service>& search = services_.search;
    if (word_ == collectThemes) {
        return std::make_unique<ThemesJob>(stores_, order_, settings_, search, clock_);
    }
    if (word_ == collectCompanies) {
        return std::make_unique<CompaniesJob>(stores_, order_, settings_, search, clock_);
    }
    if (word_ == collectCommodities) {
        return std::make_unique<CommoditiesJob>(stores_, order_, settings_, search, clock_);
    }
    return makeCodeTableJob();
}

std::unique_ptr<Job> CollectorProgram::makeCodeTableJob() {
    const QString exceptions = folder_ + u"initials.csv"_s;
    initials_ = std::make_unique<Initials>(QFileInfo::exists(exceptions)
                                               ? readInitialsExceptions(exceptions)
                                               : QHash<QString, QString>());
    QList<Service> quote = services_.quote;
    for (Service& it : quote) {
        it.timeoutSeconds = it.timeoutSeconds == 0 ? settings_.timeoutSeconds : it.timeoutSeconds;
    }
    return std::make_unique<CodeTableJob>(stores_, clock_, *initials_, quote);
}

void CollectorProgram::noteEnd(const RunTally& tally) {
    const RunState state = collection_->state();
    if (vainStates.contains(state)) {
        note_->failed(collection_->summary());
    } else {
        const QString why = state == RunState::unwanted ? u"主程序已退出"_s : QString();
        QStringList counts = {why, collection_->countWords(), tally.failureWords()};
        counts.removeAll(QString());
        note_->ended(counts.join(u'；'), state != RunState::finished);
    }
    note_.reset();
}

// The window stays with its summary until the user closes it, unless nobody is there to see it.
void CollectorProgram::end() {
    const RunTally tally = collection_->tally();
    noteEnd(tally);
    QStringList lines = {collection_->summary(), tally.failureWords()};
    if (!tally.skipped.isEmpty()) {
        lines << u"跳过："_s + tally.skipped.join(u'、');
    }
    lines.removeAll(QString());
    QTextStream(stdout) << lines.join(u'\n') << '\n';
    if (collection_->state() != RunState::stopped) {
        notifier_.notify(job_->title(), collection_->summary());
    }
    if (!window_->isVisible() || collection_->state() == RunState::unwanted) {
        QCoreApplication::quit();
    }
}

}  // namespace guanchao
