// Dialogs as message boxes over the window that has the focus.
#pragma once

#include <QList>
#include <QMessageBox>
#include <QPointer>

#include "platform/dialogs.h"

namespace guanchao {

class DesktopDialogs : public Dialogs {
public:
    ~DesktopDialogs() override;

    void tell(const QString& text, const QString& title) override;
    void tellDone(const QString& text) override;
    void tellFailure(const QString& text) override;
    QCoro::Task<bool> ask(std::stop_token stop, QString text, QString title) override;
    QCoro::Task<Unsaved> askToSave(std::stop_token stop, QString text, QString title) override;
    QCoro::Task<Existing> askToReplace(std::stop_token stop, QString text, QString title) override;
    QCoro::Task<QString> input(std::stop_token stop, QString prompt, QString title,
                               QString text) override;
    QCoro::Task<QString> dakaiwenjian(std::stop_token stop, QString title, QString folder,
                                      QString file) override;
    QCoro::Task<QString> pickFolder(std::stop_token stop, QString title, QString folder) override;
    QCoro::Task<QString> baocunwenjian(std::stop_token stop, QString folder, QString file,
                                       QStringList filters) override;

private:
    void addAnswer(QMessageBox* box, const QString& text);
    void showNextAnswer();

    QList<QMessageBox*> answers_;  // the first one stands
    QPointer<QMessageBox> failure_;
    QString firstFailure_;
    int furtherFailures_ = 0;
};

}  // namespace guanchao
