#include "heat/form25.h"

#include "heat/heat_subjects.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form25::Form25(Environment& environment, Windows&)
    : NewsWindow(environment, themeNews(),
                 {.caption = u"主题新闻数量分析--因特网热度排名"_s,
                  .item = u"主题名称"_s,
                  .showAll = u"显示全部主题"_s}) {}

}  // namespace guanchao
