// What Form25 and Form31 share: a ranking by the amount of news, the history of one item with its
// plot, the settings of the collector and its launch. Tables xinwenshul, gongsixinwen and canshu
// of the heat store; the rules are in HeatRanking, collector_contract and CollectorLaunch.
#pragma once

#include <QMenu>
#include <memory>

#include "heat/collector_contract.h"
#include "heat/heat_window.h"

namespace Ui {
class NewsWindow;
}

namespace guanchao {

class NewsWindow : public HeatWindow {
    Q_OBJECT

public:
    struct Words {
        QString caption;
        QString item;  // 主题名称
        QString showAll;
    };

    NewsWindow(Environment& environment, const HeatSubject& subject, const Words& words);
    ~NewsWindow() override;

private:
    void showWords(const Words& words);
    void connectControls();
    void connectMenu();
    void Form_Load();
    void showSettings(const NewsSettings& stored);
    int checkedDays();

    void Check1_Click();
    void Text2_Change();
    void offerHeadlines(QAction& action, GridView& view, const ResultGrid& grid);
    void openHeadlines(const ResultGrid& grid);

    const StoreFile& heat_;
    std::unique_ptr<Ui::NewsWindow> ui_;
    QMenu kuaijiemenu_;  // 快捷菜单: on an item
    QMenu historyMenu_;  // on a day of its history
};

}  // namespace guanchao
