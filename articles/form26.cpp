#include "articles/form26.h"

#include <QFile>
#include <QLineEdit>
#include <QShortcut>
#include <utility>

#include "articles/form27.h"
#include "base/activity.h"
#include "frame/open_windows.h"
#include "ui_form26.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A related list shows its first line; without rows the box stays as it was.
void showLines(EntryBox& box, const QStringList& lines) {
    box.refill(lines);
    if (!lines.isEmpty()) {
        box.setText(lines.first());
    }
}

}  // namespace

Form26::Form26(Environment& environment, Windows& /*windows*/)
    : AskingWindow(Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form26>()),
      editor_(environment.stores, environment.globals, environment.clock, environment.dialogs),
      draftPath_(newDraftPath(environment.applicationFolder)),
      deletion_(environment.failures),
      leaving_(environment.failures) {
    ui_->setupUi(this);
    ui_->findBar->setTextEdit(*ui_->RichTextBox1);
    ui_->Label3->hide();
    date_ = new DateBoxes(*ui_->Combo1, *ui_->Combo2, *ui_->Combo3, this);
    connectControls();
    connectTimers();
    Form_Load();
}

Form26::~Form26() = default;

void Form26::connectControls() {
    connect(ui_->Combo4, &QComboBox::activated, this, &Form26::Combo4_Click);
    for (EntryBox* box : {ui_->Combo6, ui_->Combo7, ui_->Combo8, ui_->Combo9}) {
        connect(box, &QComboBox::activated, this, [this, box] { related_Click(*box); });
        // The line that shows, or a typed number; another line of the list the box tells itself.
        connect(box->lineEdit(), &QLineEdit::returnPressed, this, [this, box] {
            const int line = box->findText(box->currentText());
            if (line < 0 || line == box->currentIndex()) {
                related_Click(*box);
            }
        });
    }
    for (EntryBox* box :
         {ui_->Combo1, ui_->Combo2, ui_->Combo3, ui_->Combo4, ui_->Combo5, ui_->Combo10}) {
        connect(box, &QComboBox::currentTextChanged, this, &Form26::noteChange);
    }
    connect(ui_->Text7, &QLineEdit::textChanged, this, &Form26::noteChange);
    connect(ui_->RichTextBox1, &ArticleText::textChanged, this, &Form26::noteChange);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form26::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form26::Command3_Click);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form26::Command4_Click);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, ui_->findBar,
            &FindBar::open);
    connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, ui_->findBar,
            &FindBar::findNext);
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3), this), &QShortcut::activated,
            ui_->findBar, &FindBar::findPrevious);
}

void Form26::connectTimers() {
    struct TimerSetting {
        QTimer& timer;
        const char* name;
        int milliseconds;
        void (Form26::*tick)();
    };
    for (const TimerSetting& it : {TimerSetting{Timer1_, "Timer1", 3000, &Form26::Timer1_Timer},
                                   TimerSetting{Timer2_, "Timer2", 10, &Form26::Timer2_Timer},
                                   TimerSetting{Timer3_, "Timer3", 10, &Form26::Timer3_Timer},
                                   TimerSetting{drafts_, "drafts", 30000, &Form26::drafts_Timer}}) {
        it.timer.setParent(this);
        it.timer.setObjectName(QString::fromLatin1(it.name));
        it.timer.setInterval(it.milliseconds);
        connect(&it.timer, &QTimer::timeout, this, it.tick);
    }
}

void Form26::Form_Load() {
    const ArticleLists lists = editor_.lists();
    ui_->Combo4->refill(lists.categories);
    ui_->Combo5->refill(lists.subcategories);
    ui_->Combo10->refill(lists.authors);
    showArticle(editor_.open());
    showRelated(editor_.related(fields()));
}

ArticleFields Form26::fields() const {
    return {ui_->Label7->text(),         date_->texts(),
            ui_->Combo10->currentText(), ui_->Combo4->currentText(),
            ui_->Combo5->currentText(),  ui_->Text7->text(),
            ui_->RichTextBox1->text()};
}

void Form26::showArticle(const std::optional<ArticleFields>& article) {
    if (!article) {
        Timer2_.start();
        return;
    }
    ui_->Label7->setText(article->id);
    write(*article);
    kept_ = fields();
    drafts_.stop();
}

void Form26::write(const ArticleFields& article) {
    date_->setTexts(article.date);
    ui_->Combo10->setText(article.author);
    ui_->Combo4->setText(article.category);
    ui_->Combo5->setText(article.subcategory);
    ui_->Text7->setText(article.title);
    ui_->Text7->setCursorPosition(0);
    ui_->RichTextBox1->setText(article.body);
}

// Of a deleted article the text is a new one: its window doesn't close.
void Form26::takeUp(const LeftDraft& left) {
    Timer2_.stop();
    if (kept_.id.toInt() > 0 && kept_ != left.draft.read) {
        environment_.dialogs.tell(u"文章《"_s + kept_.title +
                                  u"》在这份草稿之后又有过修改。窗口里是草稿，"
                                  u"保存会盖掉那些修改。"_s);
    }
    draftPath_ = left.path;
    write(left.draft.typed);
}

void Form26::showRelated(const RelatedArticles& related) {
    showLines(*ui_->Combo6, related.sameDay);
    showLines(*ui_->Combo7, related.sameAuthor);
    showLines(*ui_->Combo8, related.sameCategory);
    showLines(*ui_->Combo9, related.sameSubcategory);
    failure_ = related.failure;
}

// A failure of the load is told over the open window: the article can be read all the same.
bool Form26::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && failure_) {
        QMetaObject::invokeMethod(
            this, [failure = std::exchange(failure_, nullptr)] { std::rethrow_exception(failure); },
            Qt::QueuedConnection);
    }
    return AskingWindow::event(event);
}

void Form26::Combo4_Click() {
    ui_->Combo5->refill(subcategoriesOf(environment_.stores, ui_->Combo4->currentText()));
}

void Form26::related_Click(const EntryBox& box) {
    next_ = idOfLine(box.currentText());
    leave([this] { Timer3_.start(); });
}

void Form26::Command2_Click() {
    ArticleFields saved = fields();
    const bool added = editor_.add(saved);
    showSaved(saved, added ? ArticleEditor::added : QString());
}

void Form26::Command3_Click() {
    ArticleFields saved = fields();
    const QString words = editor_.save(saved);
    showSaved(saved, words);
}

// A refused save shows what became of the boxes too.
void Form26::showSaved(const ArticleFields& saved, const QString& words) {
    ui_->Label7->setText(saved.id);
    ui_->Combo10->setText(saved.author);
    ui_->Combo4->setText(saved.category);
    ui_->Combo5->setText(saved.subcategory);
    if (!words.isEmpty()) {
        kept_ = fields();
        forgetDraft();
        ui_->Label3->setText(words);
        ui_->Label3->show();
        Timer1_.start();
        tellBrowser();
    }
}

// The list shows the change at once.
void Form26::tellBrowser() const {
    if (auto* browser = environment_.openWindows.find<Form27>()) {
        browser->showChange();
    }
}

void Form26::Command4_Click() {
    deletion_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const ArticleFields shown = fields();
        const bool removed = co_await editor_.remove(shown, stop);
        if (removed) {
            forgetDraft();
            tellBrowser();
            QDialog::reject();
        }
    });
}

void Form26::Timer1_Timer() {
    Timer1_.stop();
    ui_->Label3->hide();
}

void Form26::Timer2_Timer() {
    Timer2_.stop();
    QDialog::reject();
}

void Form26::Timer3_Timer() {
    Timer3_.stop();
    showArticle(editor_.moveTo(next_));
}

// The first change since what is put aside.
void Form26::noteChange() {
    if (!drafts_.isActive()) {
        drafts_.start();
    }
}

void Form26::drafts_Timer() {
    drafts_.stop();
    const ArticleFields typed = fields();
    if (typed == kept_) {
        forgetDraft();
        return;
    }
    const Activity activity(u"保存草稿"_s, u"窗口里的文字没有改动。"_s);
    putAside(draftPath_, {kept_, typed, environment_.clock.now()});
}

void Form26::forgetDraft() {
    drafts_.stop();
    QFile::remove(draftPath_);
}

void Form26::reject() {
    leave([this] { QDialog::reject(); });
}

// Unsaved changes are asked about once; a deletion that waits for its answer is then off.
void Form26::leave(const std::function<void()>& step) {
    deletion_.stop();
    if (fields() == kept_) {
        forgetDraft();
        step();
    } else if (!leaving_.running()) {
        leaving_.start([this, step](std::stop_token stop) { return leaveUnsaved(step, stop); });
    }
}

QCoro::Task<> Form26::leaveUnsaved(std::function<void()> step, std::stop_token stop) {
    comeToTheFront();
    const ArticleFields shown = fields();
    const Unsaved answer = co_await editor_.askToSave(shown, stop);
    if (answer == Unsaved::discard || (answer == Unsaved::save && save())) {
        forgetDraft();
        step();
    } else {
        emit stays();
    }
}

// False too where the store refuses it: that is told, and the text stays.
bool Form26::save() {
    environment_.failures.guard([this] { Command3_Click(); });
    return fields() == kept_;
}

// Of several articles the user sees the one that is asked about.
void Form26::comeToTheFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

}  // namespace guanchao
