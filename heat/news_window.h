// What Form25 and Form31 share: a ranking by the amount of news, the history of one item with its
// plot, the settings of the collector and its launch. Tables xinwenshul, gongsixinwen and canshu
// of the heat store; the rules are in NewsRanking, collector_contract and CollectorLaunch.
#pragma once

#include <memory>

#include "frame/environment.h"
#include "heat/collector_contract.h"
#include "heat/collector_launch.h"
#include "heat/heat_window.h"
#include "heat/news_ranking.h"

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
        QString argumentWord;  // of the collector
    };

    NewsWindow(Environment& environment, const NewsSubject& subject, const Words& words);
    ~NewsWindow() override;

private:
    void showWords();
    void connectControls();
    void Form_Load();
    void showSettings(const NewsSettings& stored);
    int checkedDays();

    void Check1_Click();
    void Text2_Change();
    void Command1_Click();
    void Command2_Click();
    void Command9_Click();
    void MSHFlexGrid1_MouseDown(int row, Qt::MouseButton button);
    void MSHFlexGrid1_DblClick();

    const Stores& stores_;
    Words words_;
    std::unique_ptr<Ui::NewsWindow> ui_;
    NewsRanking ranking_;
    CollectorLaunch collectorLaunch_;
    QString yinqingurl_;  // 引擎网址: the template of the search page
};

}  // namespace guanchao
