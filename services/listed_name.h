// A stock's short name as a public service writes it, and as the code table keeps it.
#pragma once

#include <QString>

namespace guanchao {

// A service writes 万 科Ａ where the table has 万科A.
QString plainName(const QString& listed);

// On the day of a dividend a service puts a mark before the name and cuts its end off.
bool hasDayMark(const QString& listed);

}  // namespace guanchao
