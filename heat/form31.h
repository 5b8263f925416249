// Form31, "公司新闻数量分析--因特网热度排名": companies by the amount of news on the internet.
// Table gongsixinwen of the heat store. Its load takes dangqiangongsi over; window and rules are
// those of NewsWindow and HeatRanking.
#pragma once

#include "frame/windows.h"
#include "heat/news_window.h"

namespace guanchao {

class Form31 : public NewsWindow {
    Q_OBJECT

public:
    Form31(Environment& environment, Windows& windows);
};

}  // namespace guanchao
