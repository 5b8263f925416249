#include "platform/desktop/desktop_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// dakaiwenjian has room for this many characters; a longer path counts as none picked.
constexpr qsizetype longestPath = 255;

// Every box is held by a QPointer: what it stands on may be a box itself, which closes and takes it
// along.

QPushButton* addButton(QMessageBox& box, const QString& words, QMessageBox::ButtonRole role) {
    QPushButton* button = box.addButton(words, role);
    button->setAccessibleName(words);
    return button;
}

QPointer<QMessageBox> newBox(QMessageBox::Icon icon, const QString& title, const QString& text) {
    auto* box =
        new QMessageBox(icon, title, text, QMessageBox::NoButton, QApplication::activeWindow());
    box->setTextFormat(Qt::PlainText);
    return box;
}

// A long text scrolls, so that the buttons of its box stay on the screen. It breaks anywhere: a
// list of codes has no blanks.
void scrollLongText(QMessageBox& box) {
    constexpr int longText = 1000;
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (box.text().size() < longText || !label) {
        return;
    }
    auto* text = new QPlainTextEdit(box.text(), &box);
    text->setReadOnly(true);
    text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text->setMinimumSize(560, 360);
    delete box.layout()->replaceWidget(label, text);
    label->hide();
}

bool isAnsweredByOk(const QString& text, const QString& title, bool enterIsOk) {
    const QPointer<QMessageBox> box = newBox(QMessageBox::Information, title, text);
    QPushButton* ok = addButton(*box, u"确定"_s, QMessageBox::AcceptRole);
    QPushButton* cancel = addButton(*box, u"取消"_s, QMessageBox::RejectRole);
    box->setDefaultButton(enterIsOk ? ok : cancel);
    box->setEscapeButton(cancel);
    box->exec();
    const bool yes = box && box->clickedButton() == ok;
    delete box;
    return yes;
}

QString pickedIn(const QPointer<QFileDialog>& box, const QString& file) {
    box->selectFile(file);
    box->resize(820, 500);  // sizes and dates in full
    const bool accepted = box->exec() == QDialog::Accepted;
    const QString picked = box && accepted ? box->selectedFiles().value(0) : QString();
    delete box;
    return picked;
}

}  // namespace

void DesktopDialogs::tell(const QString& text, const QString& title) {
    const QPointer<QMessageBox> box = newBox(QMessageBox::Warning, title, text);
    addButton(*box, u"确定"_s, QMessageBox::AcceptRole);
    scrollLongText(*box);
    box->exec();
    delete box;
}

bool DesktopDialogs::ask(const QString& text, const QString& title) {
    return isAnsweredByOk(text, title, true);
}

bool DesktopDialogs::askToLose(const QString& text, const QString& title) {
    return isAnsweredByOk(text, title, false);
}

QString DesktopDialogs::input(const QString& prompt, const QString& title, const QString& text) {
    const QPointer<QInputDialog> box = new QInputDialog(QApplication::activeWindow());
    box->setWindowTitle(title);
    box->setLabelText(prompt);
    box->setTextValue(text);
    box->setOkButtonText(u"确定"_s);
    box->setCancelButtonText(u"取消"_s);
    box->resize(420, box->sizeHint().height());
    const bool accepted = box->exec() == QDialog::Accepted;
    const QString typed = box && accepted ? box->textValue() : QString();
    delete box;
    return typed;
}

QString DesktopDialogs::dakaiwenjian(const QString& title, const QString& folder,
                                     const QString& file) {
    auto* box = new QFileDialog(QApplication::activeWindow(), title, folder, u"所有 (*)"_s);
    box->setFileMode(QFileDialog::ExistingFile);
    const QString picked = pickedIn(box, file);
    return picked.size() > longestPath ? QString() : picked;
}

QString DesktopDialogs::baocunwenjian(const QString& folder, const QString& file,
                                      const QStringList& filters) {
    auto* box = new QFileDialog(QApplication::activeWindow(), u"另存为"_s, folder);
    box->setAcceptMode(QFileDialog::AcceptSave);
    box->setNameFilters(QStringList(filters).replaceInStrings(u"(*.*)"_s, u"(*)"_s));
    // A name typed without a suffix takes that of the chosen filter.
    const auto takeSuffix = [box](const QString& filter) {
        static const QRegularExpression suffix(u"\\(\\*\\.(\\w+)\\)"_s);
        box->setDefaultSuffix(suffix.match(filter).captured(1));
    };
    takeSuffix(filters.value(0));
    QObject::connect(box, &QFileDialog::filterSelected, box, takeSuffix);
    return pickedIn(box, file);
}

}  // namespace guanchao
