#include "monitor/crossing.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool crosses(const QString& bijiaofu, double baojinzhi, double oldValue, double newValue) {
    if (bijiaofu == u">"_s) {
        return newValue > baojinzhi && oldValue < baojinzhi;
    }
    return bijiaofu == u"<"_s && newValue < baojinzhi && oldValue > baojinzhi;
}

}  // namespace guanchao
