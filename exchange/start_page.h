// StartPage, "开始使用": what one can begin with: practise, fill the code table and the themes from
// the public services, take over the folder of an earlier program, take a day's copy back; and
// where the guide is. The rules are in LiveFill and EarlierFolder; taking over and restoring is
// done by whoever has opened it. Table of what it fills: dmb and dzhzhuti of the main store.
#pragma once

#include <QDialog>
#include <QShortcut>
#include <memory>

#include "base/runs.h"
#include "exchange/earlier_folder.h"
#include "exchange/live_fill.h"
#include "frame/environment.h"
#include "frame/run_panel.h"
#include "frame/windows.h"

class QCommandLinkButton;

namespace Ui {
class StartPage;
}

namespace guanchao {

// The program beside this one that starts the practice, by its name in the application folder; it
// has a folder of its own and runs beside this one.
inline const QString practiceStarter = QStringLiteral("guanchaotai-lianxi");

class StartPage : public QDialog {
    Q_OBJECT

public:
    StartPage(Environment& environment, Windows& windows);
    ~StartPage() override;

    // Whether the user has chosen anything yet.
    bool hasChosen() const { return hasChosen_; }

    // Below the choices: why a takeover came to nothing, and what to do.
    void showTakeOverFailure(const QString& why);

signals:
    // Something has come into the store.
    void imported();
    // The user wants a copy back, and has agreed that this folder's stores take the place of those
    // that are here.
    void restoreWanted();
    void takeOverAgreed(const CopyChoice& choice);

private:
    void connectControls();
    void choose(QCommandLinkButton& button, const std::function<void()>& job);
    void showChoices();

    void practise();
    QCoro::Task<> takeOver(std::stop_token stop);

    void say(const QString& words);
    void showPage(QWidget& page);
    void showFilling();
    void beginFill();
    QCoro::Task<> fill(std::stop_token stop);
    void showFilled(const LiveFillResult& result);
    void stopFill();
    void showState();

    Environment& environment_;
    std::unique_ptr<Ui::StartPage> ui_;
    const QString iniPath_;
    std::unique_ptr<RunPanel> panel_;
    bool hasChosen_ = false;
    bool filling_ = false;
    std::unique_ptr<RunControl> control_;      // of the last fill
    QShortcut stopKey_{Qt::Key_Escape, this};  // closes the window while nothing is filled
    Runs runs_;
};

}  // namespace guanchao
