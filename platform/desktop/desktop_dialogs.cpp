#include "platform/desktop/desktop_dialogs.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTreeView>
#include <QWindow>
#include <memory>

#include "base/later.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// dakaiwenjian has room for this many characters; a longer path counts as none picked.
constexpr qsizetype longestPath = 255;

// More than this is no text to read in a box, and would take seconds to lay out.
constexpr qsizetype longestScrolled = 20000;

// A box that is answered is deleted after its own signal.
struct CloseBox {
    void operator()(QDialog* box) const {
        box->hide();
        box->deleteLater();
    }
};
template <typename Box>
using Shown = std::unique_ptr<Box, CloseBox>;

// What has the focus; where that is a box that has just been answered, what it stood over.
QWindow* windowBelow() {
    QWindow* window = QGuiApplication::focusWindow();
    while (window && !window->isVisible()) {
        window = window->transientParent();
    }
    return window;
}

// One that an alarm holds over all others would hide the box.
void letNoWindowStayOnTop() {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->type() != Qt::ToolTip && window->flags() & Qt::WindowStaysOnTopHint) {
            window->setFlag(Qt::WindowStaysOnTopHint, false);
        }
    }
}

// The window below may close: the box is no child of it.
void show(QDialog& box, Qt::WindowModality modality) {
    letNoWindowStayOnTop();
    box.setWindowModality(modality);
    box.winId();  // makes its window
    box.windowHandle()->setTransientParent(windowBelow());
    box.show();
    box.raise();
}

QCoro::Task<bool> isAccepted(QDialog& box, std::stop_token stop) {
    // Shared, since the box may outlive the run.
    const auto finished = std::make_shared<Later<int>>();
    QObject::connect(&box, &QDialog::finished, &box,
                     [finished](int result) { finished->deliver(result); });
    show(box, Qt::ApplicationModal);
    const int result = co_await finished->orStop(stop);
    co_return result == QDialog::Accepted;
}

QPushButton* addButton(QMessageBox& box, const QString& words, QMessageBox::ButtonRole role) {
    QPushButton* button = box.addButton(words, role);
    button->setAccessibleName(words);
    return button;
}

// A long name in a message must not swallow the question behind it.
QString withShortMiddle(const QString& text) {
    constexpr qsizetype end = longestShownMessage / 3;
    if (text.size() <= longestShownMessage) {
        return text;
    }
    const bool half = text[text.size() - end].isLowSurrogate();
    return shortened(text, longestShownMessage - end) + text.last(half ? end - 1 : end);
}

QMessageBox* newBox(QMessageBox::Icon icon, const QString& title, const QString& text) {
    auto* box = new QMessageBox(icon, shortened(title, longestShownName), text);
    box->setTextFormat(Qt::PlainText);
    return box;
}

// In the narrow box that the toolkit makes of it, with the buttons.
bool isTooHigh(const QMessageBox& box, const QString& words) {
    constexpr QRect narrow(0, 0, 360, 0);
    constexpr int besides = 140;
    const QRect lines = box.fontMetrics().boundingRect(narrow, Qt::TextWordWrap, words);
    return lines.height() + besides > box.screen()->availableSize().height();
}

// A long text scrolls, so that the buttons of its box stay on the screen. It breaks anywhere: a
// list of codes has no blanks.
void scrollLongText(QMessageBox& box, const QString& words) {
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (!label || (words.size() <= longestShownMessage && !isTooHigh(box, words))) {
        return;
    }
    auto* text = new QPlainTextEdit(shortened(words, longestScrolled), &box);
    text->setReadOnly(true);
    text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text->setMinimumSize(560, 360);
    delete box.layout()->replaceWidget(label, text);
    label->hide();
}

QMessageBox* newAnswer(QMessageBox::Icon icon, const QString& title, const QString& text) {
    QMessageBox* box = newBox(icon, title, withShortMiddle(text));
    addButton(*box, u"确定"_s, QMessageBox::AcceptRole);
    box->setAttribute(Qt::WA_DeleteOnClose);
    return box;
}

// Sizes and days in full beside the names, on a screen that has room for them.
void showColumnsInFull(QFileDialog& box) {
    const QSize room = box.screen()->availableSize();
    box.resize(QSize(960, 560).boundedTo(room));
    if (const auto* files = box.findChild<QTreeView*>(u"treeView"_s)) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setStretchLastSection(false);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

// Shows the files too, by which a user knows a folder. The toolkit's own takes none of them.
class FolderBox : public QFileDialog {
public:
    explicit FolderBox(const QString& title, const QString& folder)
        : QFileDialog(nullptr, title, folder) {
        setFileMode(Directory);
        setOption(ReadOnly);  // nothing is to be made there
        setFilter(filter() | QDir::Files);
        connect(this, &QFileDialog::currentChanged, this, &FolderBox::letFilesBeTaken);
        if (const auto* name = findChild<QLineEdit*>(u"fileNameEdit"_s)) {
            connect(name, &QLineEdit::textChanged, this, &FolderBox::letFilesBeTaken);
        }
    }

    QString folder() const {
        const QFileInfo picked(selectedFiles().value(0));
        return picked.isFile() ? picked.path() : picked.filePath();
    }

protected:
    void accept() override { isFilePicked() ? done(Accepted) : QFileDialog::accept(); }

private:
    bool isFilePicked() const { return QFileInfo(selectedFiles().value(0)).isFile(); }
    void letFilesBeTaken() {
        const auto* buttons = findChild<QDialogButtonBox*>(u"buttonBox"_s);
        if (buttons && isFilePicked()) {
            buttons->button(QDialogButtonBox::Open)->setEnabled(true);
        }
    }
};

QCoro::Task<QString> pickedIn(QFileDialog& box, QString file, std::stop_token stop) {
    box.selectFile(file);
    showColumnsInFull(box);
    const bool accepted = co_await isAccepted(box, stop);
    co_return accepted ? box.selectedFiles().value(0) : QString();
}

}  // namespace

DesktopDialogs::~DesktopDialogs() {
    qDeleteAll(answers_);
    delete failure_;
}

void DesktopDialogs::tell(const QString& text, const QString& title) {
    addAnswer(newAnswer(QMessageBox::Warning, title, text), text);
}

void DesktopDialogs::tellDone(const QString& text) {
    addAnswer(newAnswer(QMessageBox::Information, programName, text), text);
}

void DesktopDialogs::addAnswer(QMessageBox* box, const QString& text) {
    scrollLongText(*box, text);
    QObject::connect(box, &QDialog::finished, box, [this] {
        answers_.removeFirst();
        showNextAnswer();
    });
    answers_ << box;
    if (answers_.size() == 1) {
        showNextAnswer();
    }
}

void DesktopDialogs::showNextAnswer() {
    if (!answers_.isEmpty()) {
        show(*answers_.first(), Qt::ApplicationModal);
    }
}

void DesktopDialogs::tellFailure(const QString& text) {
    if (failure_ && failure_->isVisible()) {
        failure_->setText(firstFailure_ + u"\n\n此后又有 "_s + QString::number(++furtherFailures_) +
                          u" 次失败，最近一次：\n"_s + withShortMiddle(text));
        return;
    }
    firstFailure_ = withShortMiddle(text);
    furtherFailures_ = 0;
    failure_ = newAnswer(QMessageBox::Warning, programName, text);
    show(*failure_, Qt::NonModal);
}

QCoro::Task<bool> DesktopDialogs::ask(std::stop_token stop, QString text, QString title) {
    const QString words = withShortMiddle(text);
    const Shown<QMessageBox> box(newBox(QMessageBox::Information, title, words));
    scrollLongText(*box, words);
    QPushButton* ok = addButton(*box, u"确定"_s, QMessageBox::AcceptRole);
    QPushButton* cancel = addButton(*box, u"取消"_s, QMessageBox::RejectRole);
    box->setDefaultButton(ok);
    box->setEscapeButton(cancel);
    co_await isAccepted(*box, stop);
    co_return box->clickedButton() == ok;
}

QCoro::Task<Unsaved> DesktopDialogs::askToSave(std::stop_token stop, QString text, QString title) {
    const Shown<QMessageBox> box(newBox(QMessageBox::Information, title, withShortMiddle(text)));
    const QPushButton* save = addButton(*box, u"保存"_s, QMessageBox::AcceptRole);
    const QPushButton* discard = addButton(*box, u"不保存"_s, QMessageBox::DestructiveRole);
    QPushButton* cancel = addButton(*box, u"取消"_s, QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    co_await isAccepted(*box, stop);
    if (box->clickedButton() == save) {
        co_return Unsaved::save;
    }
    co_return box->clickedButton() == discard ? Unsaved::discard : Unsaved::stay;
}

QCoro::Task<Existing> DesktopDialogs::askToReplace(std::stop_token stop, QString text,
                                                   QString title) {
    const Shown<QMessageBox> box(newBox(QMessageBox::Information, title, withShortMiddle(text)));
    QPushButton* add = addButton(*box, u"添加"_s, QMessageBox::AcceptRole);
    const QPushButton* replace = addButton(*box, u"替换"_s, QMessageBox::DestructiveRole);
    QPushButton* cancel = addButton(*box, u"取消"_s, QMessageBox::RejectRole);
    box->setDefaultButton(add);
    box->setEscapeButton(cancel);
    co_await isAccepted(*box, stop);
    if (box->clickedButton() == add) {
        co_return Existing::add;
    }
    co_return box->clickedButton() == replace ? Existing::replace : Existing::leave;
}

QCoro::Task<QString> DesktopDialogs::input(std::stop_token stop, QString prompt, QString title,
                                           QString text) {
    const Shown<QInputDialog> box(new QInputDialog);
    box->setWindowTitle(shortened(title, longestShownName));
    box->setLabelText(withShortMiddle(prompt));
    box->setTextValue(text);
    box->setOkButtonText(u"确定"_s);
    box->setCancelButtonText(u"取消"_s);
    box->resize(420, box->sizeHint().height());
    const bool accepted = co_await isAccepted(*box, stop);
    co_return accepted ? box->textValue() : QString();
}

QCoro::Task<QString> DesktopDialogs::dakaiwenjian(std::stop_token stop, QString title,
                                                  QString folder, QString file) {
    const Shown<QFileDialog> box(new QFileDialog(nullptr, title, folder, u"所有 (*)"_s));
    box->setFileMode(QFileDialog::ExistingFile);
    const QString picked = co_await pickedIn(*box, file, stop);
    co_return picked.size() > longestPath ? QString() : picked;
}

QCoro::Task<QString> DesktopDialogs::pickFolder(std::stop_token stop, QString title,
                                                QString folder) {
    const Shown<FolderBox> box(new FolderBox(title, folder));
    showColumnsInFull(*box);
    const bool accepted = co_await isAccepted(*box, stop);
    co_return accepted ? box->folder() : QString();
}

QCoro::Task<QString> DesktopDialogs::baocunwenjian(std::stop_token stop, QString folder,
                                                   QString file, QStringList filters) {
    const Shown<QFileDialog> box(new QFileDialog(nullptr, u"另存为"_s, folder));
    box->setAcceptMode(QFileDialog::AcceptSave);
    box->setNameFilters(QStringList(filters).replaceInStrings(u"(*.*)"_s, u"(*)"_s));
    // A name typed without a suffix takes that of the chosen filter.
    const auto takeSuffix = [&box = *box](const QString& filter) {
        static const QRegularExpression suffix(u"\\(\\*\\.(\\w+)\\)"_s);
        box.setDefaultSuffix(suffix.match(filter).captured(1));
    };
    takeSuffix(filters.value(0));
    QObject::connect(box.get(), &QFileDialog::filterSelected, box.get(), takeSuffix);
    const QString picked = co_await pickedIn(*box, file, stop);
    co_return picked;
}

}  // namespace guanchao
