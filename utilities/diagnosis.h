// 诊断: what a user sends to who looks for a fault. It is made of the program's own words, of
// numbers and of the names of its own files: no key, no password and nothing that the user has
// written.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "base/run_progress.h"
#include "base/worker.h"
#include "services/check_run.h"
#include "services/service_entries.h"
#include "store/stores.h"

namespace guanchao {

struct DiagnosisSection {
    QString title;
    QStringList lines;
};

// A readable text, a section under the other.
QString diagnosisText(const QList<DiagnosisSection>& sections, const QDateTime& now);
// 诊断_20261126_2241.txt
QString diagnosisFileName(const QDateTime& now);

// What is looked through on the disk.
struct DiagnosedFolder {
    QString path;  // the application folder
    Stores stores;
    bool isFilling = false;  // the histories: a look through them would hold that up
};

// In a worker. A stop leaves out the stores that are still to come, and says so.
QList<DiagnosisSection> diagnoseFolder(const DiagnosedFolder& folder, const std::stop_token& stop,
                                       Work<RunProgress>& work);

// 行情 新浪 https://hq.sinajs.cn：在用，限时 15 秒
QString serviceLine(const ServiceEntry& entry);
// 行情 新浪 https://hq.sinajs.cn：通，35 毫秒
QString checkLine(const CheckRow& row);

}  // namespace guanchao
