// Form28, "设置代理服务器": the list of proxy servers with the current one, the download of a list,
// and two switches. Tables proxy and tempcanshu of the article store; the rules are in Proxies.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "utilities/proxies.h"

namespace Ui {
class Form28;
}

namespace guanchao {

class Form28 : public QDialog {
    Q_OBJECT

public:
    Form28(Environment& environment, Windows& windows);
    ~Form28() override;

protected:
    // Esc ends a download first, and closes where none is under way.
    void keyPressEvent(QKeyEvent* press) override;

private:
    void Form_Load();
    QString selectedLine() const;
    Proxy typed() const;
    void showId(const QString& id);
    void showChangedList();

    QCoro::Task<> download(std::stop_token stop);
    void showDownloading(bool downloading);

    void List1_Click();
    void Check1_Click();
    void Check3_Click(bool on);
    void Check4_Click(bool on);
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();

    std::unique_ptr<Ui::Form28> ui_;
    Proxies proxies_;
    Runs downloads_;
};

}  // namespace guanchao
