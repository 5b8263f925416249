// Form11, "个股F10资料": the company profile page of a stock in a browser control, with the way
// back, a reload and its progress; where there is none, in the system's browser. Table tempcanshu;
// the rules are in f10_page. It takes dangqiandm and dangqianjc over at its load.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "frame/environment.h"
#include "frame/windows.h"
#include "market/f10_page.h"
#include "market/page_browser.h"

namespace Ui {
class Form11;
}

namespace guanchao {

class Form11 : public QDialog {
    Q_OBJECT

public:
    Form11(Environment& environment, Windows& windows);
    ~Form11() override;

public slots:
    // Esc ends what is loading before it closes the window.
    void reject() override;

private:
    void connectBar();
    void Form_Load();
    void showPage();
    void pageHappened(PageEvent event, const QString& address);
    void pageNotLoaded(const QString& address);
    void note(const QString& address, const QString& failure);
    void setLoading(bool loading);
    void reloadPage();
    void showBrowser();
    void showWords(const QString& words);
    void openOutside();

    Environment& environment_;
    std::unique_ptr<Ui::Form11> ui_;
    F10Page page_;
    bool hasPage_ = false;  // one has come since the window opened
    QTimer Timer1_;         // once, to unload a window without a page
    std::unique_ptr<PageBrowser> browser_;
};

}  // namespace guanchao
