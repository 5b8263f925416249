#include "exchange/start_page.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>

#include "base/log.h"
#include "base/log_words.h"
#include "base/values.h"
#include "base/worker.h"
#include "exchange/code_table_settings.h"
#include "platform/guide.h"
#include "services/answer_wait.h"
#include "ui_start_page.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString practising = u"现在是练习，行情是编的。退出练习，从程序菜单启动“观潮台”以后再选。"_s;

// One that can't be chosen says why.
void bar(QCommandLinkButton& button, const QString& why) {
    button.setDescription(why);
    button.setEnabled(false);
    button.setAutoDefault(false);  // else an inactive window marks it as the one that Enter takes
}

}  // namespace

StartPage::StartPage(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::StartPage>()),
      iniPath_(environment.interfaceIniPath()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    panel_ = std::make_unique<RunPanel>(
        RunPanel::Controls{nullptr, ui_->stop, ui_->step, ui_->progress, ui_->words});
    ui_->beijing->setChecked(CodeTableSettings(iniPath_).wantsBeijing());
    connectControls();
    showPage(*ui_->choices);
    showChoices();
    ui_->place->setToolTip(environment.applicationFolder + guidePage);
    showState();
}

StartPage::~StartPage() = default;

void StartPage::connectControls() {
    choose(*ui_->practise, [this] { practise(); });
    choose(*ui_->live, [this] { showFilling(); });
    choose(*ui_->takeOver, [this] {
        if (!runs_.running()) {
            runs_.start([this](std::stop_token stop) { return takeOver(stop); });
        }
    });
    choose(*ui_->restore, [this] { emit restoreWanted(); });
    connect(ui_->back, &QPushButton::clicked, this, [this] {
        say({});
        showPage(*ui_->choices);
        ui_->live->setFocus();
    });
    for (QCheckBox* part : {ui_->codes, ui_->themes}) {
        connect(part, &QCheckBox::toggled, this, &StartPage::showState);
    }
    connect(ui_->beijing, &QCheckBox::toggled, this,
            [this](bool wanted) { CodeTableSettings(iniPath_).setWantsBeijing(wanted); });
    connect(ui_->begin, &QPushButton::clicked, this, &StartPage::beginFill);
    connect(ui_->stop, &QPushButton::clicked, this, &StartPage::stopFill);
    connect(&stopKey_, &QShortcut::activated, this, &StartPage::stopFill);
    connect(ui_->guide, &QPushButton::clicked, this, [this] {
        openGuide(environment_.applicationFolder, {}, environment_.dialogs, environment_.shell);
    });
    connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
    // What is being written as the window closes stays.
    connect(this, &QDialog::finished, this, [this] {
        if (filling_) {
            emit imported();
        }
    });
}

void StartPage::choose(QCommandLinkButton& button, const std::function<void()>& job) {
    connect(&button, &QPushButton::clicked, this, [this, job] {
        hasChosen_ = true;
        say({});
        job();
    });
}

void StartPage::showChoices() {
    if (environment_.services.isPractice) {
        bar(*ui_->practise, u"现在就是练习：价格是编的，放心试。"_s);
        bar(*ui_->live, practising);
        bar(*ui_->takeOver, practising);
    } else if (!QFileInfo::exists(environment_.applicationFolder + practiceStarter)) {
        bar(*ui_->practise,
            u"这个文件夹里没有启动练习的程序 "_s + practiceStarter + u"，请重新安装软件。"_s);
    }
    for (QCommandLinkButton* button : {ui_->practise, ui_->live, ui_->takeOver, ui_->restore}) {
        button->setAccessibleDescription(button->description());
        // Left to itself it is squeezed until its description is cut.
        button->setMinimumHeight(button->heightForWidth(width()));
    }
}

void StartPage::practise() {
    const QString starter = environment_.applicationFolder + practiceStarter;
    say(environment_.processes.start(starter, {})
            ? u"练习正在启动，几秒钟以后出现它自己的窗口；头一次要准备数据，久一点。"
              u"它用另一个文件夹，这里的数据一点不动。"_s
            : u"没有能启动练习：运行不了 "_s + starter + u"。请重新安装软件。"_s);
}

QCoro::Task<> StartPage::takeOver(std::stop_token stop) {
    const QString path = co_await environment_.dialogs.pickFolder(
        stop, u"请选择要接管的文件夹：里面有 dzhzhuti.mzdat"_s, QDir::homePath());
    if (path.isEmpty()) {
        co_return;
    }
    say(u"正在查看文件夹 "_s + path + u"…"_s);
    auto quiet = qScopeGuard([this] { say({}); });
    const auto look = [stores = environment_.stores, own = environment_.applicationFolder,
                       path](const auto&) { return lookIntoFolder(stores, own, path); };
    const EarlierFolder folder = co_await inWorker(look, stop);
    if (!folder.refusal.isEmpty()) {
        writeLog({LogKind::failure, u"接管文件夹"_s, headOf(folder.refusal)});
        quiet.dismiss();
        say(u"没有接管文件夹 "_s + folder.path + u"。\n"_s + folder.refusal);
        co_return;
    }
    const auto count = [stores = environment_.stores](const auto&) {
        return contentsOf(allCopied, stores, Look::quick);
    };
    const StoreContents present = co_await inWorker(count, stop);
    quiet.dismiss();  // from here on others may tell something
    say({});
    const QString question = takeOverQuestion(folder, present);
    const bool agreed = co_await environment_.dialogs.ask(stop, question);
    if (agreed) {
        emit takeOverAgreed(folder.choice());
    }
}

void StartPage::showTakeOverFailure(const QString& why) {
    hasChosen_ = true;
    say(QString(why).replace(u"\n\n"_s, u"\n"_s) +
        u"\n照写的做好以后，再点“接管文件夹”，或者另选一个文件夹。"_s);
    ui_->takeOver->setFocus();
}

// The window grows by what the words need.
void StartPage::say(const QString& words) {
    panel_->say(words);
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

// Enter on a tick box begins; among the choices it takes the one that has the focus.
void StartPage::showPage(QWidget& page) {
    for (QWidget* it : {ui_->choices, ui_->filling}) {
        it->setVisible(it == &page);
    }
    ui_->begin->setDefault(&page == ui_->filling);
}

void StartPage::showFilling() {
    showPage(*ui_->filling);
    ui_->begin->setFocus();
}

void StartPage::beginFill() {
    if (!runs_.running()) {
        runs_.start([this](std::stop_token stop) { return fill(stop); });
    }
}

QCoro::Task<> StartPage::fill(std::stop_token stop) {
    control_ = std::make_unique<RunControl>();
    filling_ = true;
    say({});
    showState();
    ui_->stop->setFocus();
    const auto end = qScopeGuard([this] {
        filling_ = false;
        showState();
        // From a button that is grey now.
        (ui_->begin->isEnabled() ? ui_->begin : ui_->close)->setFocus();
    });
    AnswerWait client(environment_.client, environment_.clock, *this,
                      [this](const RunProgress& it) { panel_->show(it); });
    LiveFill run(
        environment_.stores, environment_.clock, client, environment_.services,
        environment_.applicationFolder + u"initials.csv"_s, *control_,
        {[&client](const RunProgress& it) { client.show(it); }, [this] { emit imported(); }});
    const LiveFillWish wish{ui_->codes->isChecked(), ui_->beijing->isChecked(),
                            ui_->themes->isChecked()};
    const LiveFillResult result = co_await run.run(wish, stop);
    showFilled(result);
}

// What is whole isn't ticked any more.
void StartPage::showFilled(const LiveFillResult& result) {
    if (result.hasCodes()) {
        CodeTableSettings(iniPath_).setLastUpdate(timeText(environment_.clock.now()));
        ui_->codes->setChecked(false);
    }
    if (result.hasThemes()) {
        ui_->themes->setChecked(false);
    }
    say(result.words());
}

void StartPage::stopFill() {
    if (filling_) {
        control_->stop();
        showState();
    }
}

void StartPage::showState() {
    const bool wantsCodes = ui_->codes->isChecked();
    for (QWidget* part : {ui_->codes, ui_->themes}) {
        part->setEnabled(!filling_);
    }
    ui_->beijing->setEnabled(!filling_ && wantsCodes);
    ui_->begin->setEnabled(!filling_ && (wantsCodes || ui_->themes->isChecked()));
    ui_->back->setEnabled(!filling_);
    panel_->show(filling_ ? control_->shown() : ShownRun());
    stopKey_.setEnabled(filling_);
}

}  // namespace guanchao
