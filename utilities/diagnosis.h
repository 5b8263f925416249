// 诊断: what a user sends to who looks for a fault. It is made of the program's own words, of
// numbers and of the names of its own files: no key, no password and nothing that the user has
// written.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include "services/check_run.h"
#include "services/service_entries.h"

namespace guanchao {

struct DiagnosisSection {
    QString title;
    QStringList lines;
};

// A readable text, a section under the other.
QString diagnosisText(const QList<DiagnosisSection>& sections, const QDateTime& now);
// 诊断_20261126_2241.txt
QString diagnosisFileName(const QDateTime& now);

// The failures and the runs that the logs of the program and of the collector tell last.
QList<DiagnosisSection> logSections(const QString& applicationFolder);

// 行情 新浪 https://hq.sinajs.cn：在用，限时 15 秒，同时最多 3 个
QString serviceLine(const ServiceEntry& entry);
// 行情 新浪 https://hq.sinajs.cn：通，35 毫秒
QString checkLine(const CheckRow& row);

}  // namespace guanchao
