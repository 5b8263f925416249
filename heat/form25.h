// Form25, "主题新闻数量分析--因特网热度排名": themes by the amount of news on the internet. Table
// xinwenshul of the heat store. Its load takes dangqianzhuti over; window and rules are those of
// NewsWindow and HeatRanking.
#pragma once

#include "frame/windows.h"
#include "heat/news_window.h"

namespace guanchao {

class Form25 : public NewsWindow {
    Q_OBJECT

public:
    Form25(Environment& environment, Windows& windows);
};

}  // namespace guanchao
