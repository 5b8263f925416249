#include "utilities/diagnosis.h"

#include "base/log_words.h"
#include "platform/log_file.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownFailures = 40;
constexpr qsizetype shownRuns = 40;

const QList<LogKind> failing = {LogKind::failure, LogKind::service, LogKind::warning};
const QList<LogKind> running = {LogKind::program, LogKind::run};

QStringList linesOf(const QString& path, const QList<LogKind>& kinds, qsizetype most) {
    const QStringList lines = lastLines(path, kinds, most).replaceInStrings(u"\t"_s, u"　"_s);
    return lines.isEmpty() ? QStringList{u"没有"_s} : lines;
}

QString nameOf(const QString& purpose, const Service& service) {
    return QStringList{purposeName(purpose), kindName(service.kind), shownAddress(service.host)}
        .join(u' ')
        .simplified();
}

}  // namespace

QString diagnosisText(const QList<DiagnosisSection>& sections, const QDateTime& now) {
    QStringList lines = {
        u"观潮台诊断　"_s + now.toString(u"yyyy-MM-dd hh:mm"_s),
        u"里面没有密码和密钥，也没有您写的主题、文章、备注和搜索的词。发出去以前请看一遍。"_s};
    for (const DiagnosisSection& section : sections) {
        lines << QString() << u"【"_s + section.title + u"】"_s << section.lines;
    }
    return lines.join(u'\n') + u'\n';
}

QString diagnosisFileName(const QDateTime& now) {
    return u"诊断_"_s + now.toString(u"yyyyMMdd_hhmm"_s) + u".txt"_s;
}

QList<DiagnosisSection> logSections(const QString& applicationFolder) {
    const QString program = applicationFolder + logOfProgram;
    const QString collector = applicationFolder + logOfCollector;
    return {{u"最近的失败和警告"_s, linesOf(program, failing, shownFailures)},
            {u"最近的运行"_s, linesOf(program, running, shownRuns)},
            {u"采集程序最近的失败和警告"_s, linesOf(collector, failing, shownFailures)},
            {u"采集程序最近的运行"_s, linesOf(collector, running, shownRuns)}};
}

QString serviceLine(const ServiceEntry& entry) {
    const Service& it = entry.service;
    const QString use = it.host.isEmpty() ? u"没有网址"_s : u"在用"_s;
    return nameOf(entry.purpose, it) + u"："_s + (entry.isUsed ? use : u"停用"_s) +
           u"，限时 %1 秒，间隔 %2 秒，同时 %3 个"_s.arg(it.timeoutSeconds)
               .arg(it.pauseSeconds)
               .arg(it.ahead);
}

// What an answer holds is of no use here, and the words on it may quote it.
QString checkLine(const CheckRow& row) {
    if (row.service.host.isEmpty()) {
        return purposeName(row.check.purpose) + u"：没有网址"_s;
    }
    const QString what = row.check.what.isEmpty() ? QString() : u"（"_s + row.check.what + u"）"_s;
    const QString status = row.status == 0 ? QString() : u"，状态 %1"_s.arg(row.status);
    const QString reason = row.finding.words.section(u'；', 0, 0).section(u'：', 0, 0);
    const QString why = row.finding.answers ? QString() : u"，"_s + headOf(reason);
    return nameOf(row.check.purpose, row.service) + what +
           u"：%1，%2 毫秒"_s.arg(row.finding.answers ? u"通"_s : u"不通"_s).arg(row.milliseconds) +
           status + why;
}

}  // namespace guanchao
