// 主题页: all about one theme in one window: what it has gained, its members, its news, its
// articles and its monitors, with the way to the windows that handle them. The rules are in
// themes/theme_facts and research/theme_gains. Its load reads dangqianzhuti.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <functional>
#include <memory>
#include <optional>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/grid_view.h"
#include "research/theme_gains.h"
#include "themes/theme_facts.h"

namespace Ui {
class ThemePage;
}

namespace guanchao {

class ThemePage : public QDialog {
    Q_OBJECT

public:
    ThemePage(Environment& environment, Windows& windows);
    ~ThemePage() override;

    const QString& theme() const { return theme_; }

    // What the popup of the main window offers on a stock; it outlives the window.
    void offer(const QList<QAction*>& onStock);

    // The quotes or the themes are others now.
    void readAgain();

signals:
    // Its entries can be switched to what fits now.
    void stockMenuOpens();

protected:
    void changeEvent(QEvent* event) override;

private:
    void setUpGrids();
    void connectControls();
    void showTheme(const QString& theme);
    void readAll();
    template <typename Given>
    void readPart(QLabel& note, std::function<Given()> read,
                  std::function<void(const Given&)> show);
    void showMembers(const ThemeMembers& members);
    void showGone(const QStringList& heirs);
    void showGains();
    void takeStock(int row);
    void openArticle(int row);
    void openMonitor(int row);
    template <typename Form>
    void opens(const QPushButton& button);

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::ThemePage> ui_;
    QString theme_;
    std::optional<MapBox> today_;
    std::optional<ThemeGains> gains_;
    QStringList codes_;  // of its members
    QString heir_;       // that the button leads to
    ResultGrid members_;
    ResultGrid articles_;
    ResultGrid monitors_;
    QMenu stockMenu_;
    Runs runs_;
    Runs historyRuns_;
};

}  // namespace guanchao
