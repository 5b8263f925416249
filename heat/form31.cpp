#include "heat/form31.h"

#include "heat/heat_subjects.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form31::Form31(Environment& environment, Windows&)
    : NewsWindow(environment, companyNews(),
                 {.caption = u"公司新闻数量分析--因特网热度排名"_s,
                  .item = u"股票代码"_s,
                  .showAll = u"显示全部股票"_s}) {}

}  // namespace guanchao
