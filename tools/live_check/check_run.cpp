#include "tools/live_check/check_run.h"

#include <algorithm>

#include "base/pause.h"
#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownOfBody = 80;

// In columns of a terminal: 用途, 结果, 种类, 毫秒, 网址; the last cell ends where it ends.
constexpr qsizetype widths[] = {22, 6, 10, 7, 34};

// Chinese letters and marks stand two columns wide.
qsizetype columnsOf(const QString& text) {
    return text.size() + std::ranges::count_if(text, [](QChar it) { return it >= QChar(0x1100); });
}

}  // namespace

QCoro::Task<QStringList> CheckRun::run(QList<Check> checks) {
    writeRow({u"用途"_s, u"结果"_s, u"种类"_s, u"毫秒"_s, u"网址"_s, u"得到什么"_s});
    QStringList silent;
    for (const Check& check : checks) {
        QList<Service> services = check.services;
        services.removeIf([](const Service& it) { return it.host.isEmpty(); });
        bool isAnswered = services.isEmpty();
        if (isAnswered) {
            writeRow({check.purpose, u"没有"_s, {}, {}, {}, u"services.ini 没有给它网址"_s});
        }
        for (const Service& service : services) {
            const bool answers = co_await ask(check, service);
            isAnswered = isAnswered || answers;
            co_await pause(pause_, std::stop_token());
        }
        if (!isAnswered) {
            silent << check.purpose;
        }
    }
    co_return QStringList(silent);
}

QCoro::Task<bool> CheckRun::ask(Check check, Service service) {
    raw_.forget();
    seen_.forget();
    const CheckDesk desk = {seen_, clock_};
    const Finding finding = co_await check.ask(desk, service);
    writeRow({check.purpose, finding.answers ? u"通"_s : u"不通"_s, service.kind,
              QString::number(raw_.milliseconds()), service.host,
              finding.answers ? finding.words : finding.words + details()});
    co_return bool(finding.answers);
}

void CheckRun::writeRow(const QStringList& cells) {
    qsizetype column = 0;
    for (const qsizetype width : widths) {
        const QString& cell = cells[column++];
        out_ << cell << QString(std::max<qsizetype>(width - columnsOf(cell), 1), u' ');
    }
    out_ << cells.last() << '\n' << Qt::flush;
}

// The beginning of what was sent, or why nothing was.
QString CheckRun::details() const {
    if (!seen_.last().reason.isEmpty()) {
        return u"："_s + seen_.last().reason;
    }
    QString words = readText(seen_.last().body).text.simplified().left(shownOfBody);
    words.removeIf([](QChar it) { return !it.isPrint(); });
    return words.isEmpty() ? QString() : u"；应答开头："_s + words;
}

}  // namespace guanchao
