#include "market/form11.h"

#include <QShortcut>
#include <QUrl>

#include "base/values.h"
#include "services/service_watch.h"
#include "ui_form11.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString hostOf(const QString& address) {
    const QUrl url(address);
    return url.scheme() + u"://"_s + url.authority();
}

}  // namespace

Form11::Form11(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window), environment_(environment), ui_(std::make_unique<Ui::Form11>()) {
    ui_->setupUi(this);
    ui_->bar->hide();
    connectBar();
    Timer1_.setParent(this);
    Timer1_.setObjectName(u"Timer1"_s);
    Timer1_.setInterval(10);
    Timer1_.setSingleShot(true);
    connect(&Timer1_, &QTimer::timeout, this, &Form11::close);
    // The browser keeps the keys to itself.
    new QShortcut(QKeySequence::Cancel, this, [this] { reject(); });
    Form_Load();
}

Form11::~Form11() = default;

void Form11::connectBar() {
    connect(ui_->back, &QPushButton::clicked, this, [this] { browser_->back(); });
    connect(ui_->reload, &QPushButton::clicked, this, &Form11::reloadPage);
    connect(ui_->stopRun, &QPushButton::clicked, this, [this] { browser_->stop(); });
}

void Form11::Form_Load() {
    const std::optional<F10Page> page =
        takeF10Page(environment_.stores, environment_.globals, environment_.dialogs);
    if (!page) {
        Timer1_.start();
        return;
    }
    page_ = *page;
    setWindowTitle(shortened(page_.caption, longestShownName));
    ui_->Label1->setText(shortened(openingWords(page_), longestShownMessage));
    // The browser takes half a second to start: the window is on the screen by then.
    QMetaObject::invokeMethod(this, &Form11::showPage, Qt::QueuedConnection);
}

void Form11::showPage() {
    browser_ = makePageBrowser(
        environment_.applicationFolder, *this,
        {.happened = [this](PageEvent event,
                            const QString& address) { pageHappened(event, address); },
         .progress = [this](int percent) { ui_->progress->setValue(percent); }});
    if (!browser_) {
        openOutside();
        return;
    }
    ui_->rows->addWidget(&browser_->control(), 1);
    setLoading(false);
    showBrowser();
    browser_->control().setFocus();
    browser_->open(page_.address);
}

void Form11::pageHappened(PageEvent event, const QString& address) {
    setLoading(event == PageEvent::begins);
    switch (event) {
        case PageEvent::begins:
            ui_->state->setText(u"正在打开 "_s + address);
            return;
        case PageEvent::shown:
            note(address, {});
            hasPage_ = true;
            ui_->state->clear();
            return;
        case PageEvent::stopped:
            ui_->state->setText(u"已停止"_s);
            return;
        case PageEvent::notLoaded:
            note(address, u"网页打不开"_s);
            pageNotLoaded(address);
            return;
        case PageEvent::ended:
            note(page_.address, u"浏览器自己结束了"_s);
            openOutside();
    }
}

// Where links lead to is the user's own matter.
void Form11::note(const QString& address, const QString& failure) {
    Service site;
    site.host = hostOf(page_.address);
    site.purpose = u"F10资料"_s;
    if (hostOf(address) == site.host) {
        environment_.watch.note(site, failure);
    }
}

// The page that the link stood on stays.
void Form11::pageNotLoaded(const QString& address) {
    if (hasPage_) {
        ui_->state->setText(u"网页打不开："_s + address);
        return;
    }
    ui_->state->clear();
    showWords(notLoadedWords(page_));
}

void Form11::setLoading(bool loading) {
    ui_->back->setEnabled(browser_->canGoBack());
    ui_->stopRun->setVisible(loading);
    ui_->progress->setVisible(loading);
}

void Form11::reject() {
    if (ui_->stopRun->isVisible()) {
        browser_->stop();
    } else {
        QDialog::reject();
    }
}

void Form11::reloadPage() {
    if (hasPage_) {
        browser_->reload();
        return;
    }
    showBrowser();
    browser_->open(page_.address);
}

void Form11::showBrowser() {
    ui_->Label1->hide();
    ui_->bar->show();
    browser_->control().show();
}

void Form11::showWords(const QString& words) {
    if (browser_) {
        browser_->control().hide();
    }
    ui_->Label1->setText(words);
    ui_->Label1->show();
}

void Form11::openOutside() {
    ui_->bar->hide();
    showWords(outsideWords(page_));
    environment_.shell.open(page_.address);
}

}  // namespace guanchao
