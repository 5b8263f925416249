#include "utilities/diagnosis.h"

#include "base/log_words.h"
#include "platform/log_file.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownFailures = 40;
constexpr qsizetype shownRuns = 40;

const QList<LogKind> failing = {LogKind::failure, LogKind::service, LogKind::toolkit};
const QList<LogKind> running = {LogKind::program, LogKind::run};

DiagnosisSection sectionOf(const QString& title, const QStringList& lines) {
    const QStringList none = {u"没有"_s};
    return {title, lines.isEmpty() ? none : QStringList(lines).replaceInStrings(u"\t"_s, u"　"_s)};
}

// What the program could not write stands behind what it could.
QStringList linesOfProgram(const QString& path, const QList<LogKind>& kinds, qsizetype most) {
    const QStringList unwritten = unwrittenLines(kinds, most);
    const QStringList told = {u"下面这些没有能写进日志，请看应用文件夹能不能写、磁盘满没满："_s};
    return lastLines(path, kinds, most) + (unwritten.isEmpty() ? QStringList() : told + unwritten);
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
    return {sectionOf(u"最近的失败"_s, linesOfProgram(program, failing, shownFailures)),
            sectionOf(u"最近的运行"_s, linesOfProgram(program, running, shownRuns)),
            sectionOf(u"采集程序最近的失败"_s, lastLines(collector, failing, shownFailures)),
            sectionOf(u"采集程序最近的运行"_s, lastLines(collector, running, shownRuns))};
}

QString serviceLine(const ServiceEntry& entry) {
    const Service& it = entry.service;
    const QString use = it.host.isEmpty() ? u"没有网址"_s : u"在用"_s;
    const QString noLimit =
        entry.purpose == u"search"_s ? u"，限时照 caijiqi.ini"_s : u"，不限时"_s;
    return loggedName(entry.purpose, it) + u"："_s + (entry.isUsed ? use : u"停用"_s) +
           (it.timeoutSeconds > 0 ? u"，限时 %1 秒"_s.arg(it.timeoutSeconds) : noLimit) +
           (it.pauseSeconds > 0 ? u"，间隔 %1 秒"_s.arg(it.pauseSeconds) : QString()) +
           (it.ahead > 1 ? u"，同时最多 %1 个"_s.arg(it.ahead) : QString());
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
    return loggedName(row.check.purpose, row.service) + what +
           u"：%1，%2 毫秒"_s.arg(row.finding.answers ? u"通"_s : u"不通"_s).arg(row.milliseconds) +
           status + why;
}

}  // namespace guanchao
