#include "market/form11.h"

#include <QShortcut>

#include "ui_form11.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form11::Form11(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window), environment_(environment), ui_(std::make_unique<Ui::Form11>()) {
    ui_->setupUi(this);
    Timer1_.setParent(this);
    Timer1_.setObjectName(u"Timer1"_s);
    Timer1_.setInterval(10);
    Timer1_.setSingleShot(true);
    connect(&Timer1_, &QTimer::timeout, this, &Form11::close);
    // The browser keeps the keys to itself.
    new QShortcut(QKeySequence::Cancel, this, [this] { close(); });
    Form_Load();
}

Form11::~Form11() = default;

void Form11::Form_Load() {
    const std::optional<F10Page> page =
        takeF10Page(environment_.stores, environment_.globals, environment_.dialogs);
    if (!page) {
        Timer1_.start();
        return;
    }
    page_ = *page;
    setWindowTitle(page_.caption);
    ui_->Label1->setText(openingWords(page_));
    // The browser takes half a second to start: the window is on the screen by then.
    QMetaObject::invokeMethod(this, &Form11::showPage, Qt::QueuedConnection);
}

void Form11::showPage() {
    browser_ = makePageBrowser(environment_.applicationFolder, page_.address, *this,
                               [this](PageFailure failure) { pageFailed(failure); });
    if (!browser_) {
        openOutside();
        return;
    }
    ui_->Label1->hide();
    ui_->rows->addWidget(browser_, 1);
    browser_->setFocus();
}

void Form11::pageFailed(PageFailure failure) {
    if (failure == PageFailure::notLoaded) {
        showWords(notLoadedWords(page_));
    } else {
        openOutside();
    }
}

void Form11::showWords(const QString& words) {
    if (browser_) {
        browser_->hide();
    }
    ui_->Label1->setText(words);
    ui_->Label1->show();
}

void Form11::openOutside() {
    showWords(outsideWords(page_));
    environment_.shell.open(page_.address);
}

}  // namespace guanchao
