// 诊断: collects what is to be known of the program, its files, stores and services, and shows it
// before the user saves, copies and sends it. The rules are in utilities/diagnosis; nothing is
// written to any store, and no request goes out but those of the test of the services.
#pragma once

#include <QDeadlineTimer>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/run_panel.h"
#include "frame/windows.h"
#include "utilities/diagnosed_folder.h"
#include "utilities/diagnosis.h"

namespace Ui {
class DiagnosisWindow;
}

namespace guanchao {

class DiagnosisWindow : public QDialog {
    Q_OBJECT

public:
    DiagnosisWindow(Environment& environment, Windows& windows);
    ~DiagnosisWindow() override;

protected:
    void keyPressEvent(QKeyEvent* press) override;

private:
    void connectControls();
    void begin();
    void stop();
    QCoro::Task<> collect(std::stop_token stop);
    QCoro::Task<> lookThroughFolder(std::stop_token stop);
    QCoro::Task<> lookThroughStores(std::stop_token stop);
    QCoro::Task<QStringList> linesOf(DiagnosedStore store, std::stop_token stop);
    QCoro::Task<QStringList> examine(DiagnosedStore store);
    QCoro::Task<> readLogs(std::stop_token stop);
    QCoro::Task<> askServices(std::stop_token stop);
    QCoro::Task<QString> askChecks();
    Check siteCheck() const;
    void showAsking(const Check& check, const Service& service, const CheckStep& step);
    void showCountdown();
    QCoro::Task<> save(std::stop_token stop);
    void copy();
    void openLog();
    void add(const DiagnosisSection& section);
    void showShare(const DiagnosedStore& store, qint64 bytes);
    void showRun(bool running);
    void showText();

    Environment& environment_;
    std::unique_ptr<Ui::DiagnosisWindow> ui_;
    std::unique_ptr<RunPanel> panel_;
    QList<DiagnosisSection> sections_;
    QDateTime collected_;
    bool collecting_ = false;
    qint64 allBytes_ = 0;  // of the stores
    qint64 doneBytes_ = 0;
    QElapsedTimer sinceStores_;
    RunProgress asking_;
    QDeadlineTimer atMost_;
    QTimer countdown_;
    std::stop_source wanted_;
    Runs questions_;
    Runs runs_;
};

}  // namespace guanchao
