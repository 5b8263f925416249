#include "services/listed_name.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString plainName(const QString& listed) {
    QString plain = listed.normalized(QString::NormalizationForm_KC);
    plain.removeIf([](QChar c) { return c.isSpace(); });
    return plain;
}

bool hasDayMark(const QString& listed) {
    return listed.startsWith(u"XD"_s) || listed.startsWith(u"XR"_s) || listed.startsWith(u"DR"_s);
}

}  // namespace guanchao
