#include "platform/desktop/desktop_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScrollArea>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QPushButton* addButton(QMessageBox& box, const QString& words, QMessageBox::ButtonRole role) {
    QPushButton* button = box.addButton(words, role);
    button->setAccessibleName(words);
    return button;
}

// A long text scrolls, so that the buttons of its box stay on the screen.
void scrollLongText(QMessageBox& box) {
    constexpr int longText = 1000;
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (box.text().size() < longText || !label) {
        return;
    }
    auto* area = new QScrollArea(&box);
    area->setFrameShape(QFrame::NoFrame);
    area->setMinimumSize(560, 360);
    area->setWidgetResizable(true);
    box.layout()->replaceWidget(label, area);
    area->setWidget(label);
}

}  // namespace

void DesktopDialogs::tell(const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    addButton(box, u"确定"_s, QMessageBox::AcceptRole);
    scrollLongText(box);
    box.exec();
}

bool DesktopDialogs::ask(const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::Information, title, text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    QPushButton* ok = addButton(box, u"确定"_s, QMessageBox::AcceptRole);
    QPushButton* cancel = addButton(box, u"取消"_s, QMessageBox::RejectRole);
    box.setDefaultButton(ok);
    box.setEscapeButton(cancel);
    box.exec();
    return box.clickedButton() == ok;
}

QString DesktopDialogs::input(const QString& prompt, const QString& title, const QString& text) {
    QInputDialog box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setTextValue(text);
    box.setOkButtonText(u"确定"_s);
    box.setCancelButtonText(u"取消"_s);
    box.resize(420, box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString DesktopDialogs::dakaiwenjian(const QString& title, const QString& folder,
                                     const QString& file) {
    QFileDialog box(QApplication::activeWindow(), title, folder, u"所有 (*)"_s);
    box.setFileMode(QFileDialog::ExistingFile);
    box.selectFile(file);
    return box.exec() == QDialog::Accepted ? box.selectedFiles().value(0) : QString();
}

}  // namespace guanchao
