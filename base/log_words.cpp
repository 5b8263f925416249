#include "base/log_words.h"

#include <QRegularExpression>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestLogged = 300;
const QString leftOut = u"…"_s;

const QString ownFiles =
    u"(?:dzhzhuti|caijiqi|wenzhang|py|yzhutibackup)\\.mzdat|hangqing2006-2017(?:dan)?\\.db3|"
    "(?:services|caijiqi|read|banben|界面)\\.ini|services\\.ini\\.以前|initials\\.csv|"
    "(?:运行|采集)日志(?:\\.以前)?\\.log"_s;
const QString besideThem = u"(?:-journal|-wal|-shm|\\.lock|\\.new)?"_s;

QString withoutAddresses(QString text) {
    static const QRegularExpression address(u"[A-Za-z][A-Za-z0-9+.-]*://\\S*"_s);
    QRegularExpressionMatch match = address.match(text);
    while (match.hasMatch()) {
        const QString shown = shownAddress(match.captured());
        text.replace(match.capturedStart(), match.capturedLength(), shown);
        match = address.match(text, match.capturedStart() + shown.size());
    }
    return text;
}

QString withoutSecrets(QString text) {
    static const QRegularExpression account(u"\\S+@\\S*"_s);
    static const QRegularExpression entry(
        u"(key|token|secret|password|passwd|pwd|密码|口令|密钥)\\s*[=:：]\\s*\\S+"_s,
        QRegularExpression::CaseInsensitiveOption);
    return text.replace(account, leftOut).replace(entry, u"\\1=…"_s);
}

QString withoutQuoted(QString text) {
    static const QRegularExpression quotes[] = {
        QRegularExpression(u"“(?:.*”|.*$)"_s),   QRegularExpression(u"‘(?:.*’|.*$)"_s),
        QRegularExpression(u"《(?:.*》|.*$)"_s), QRegularExpression(u"「(?:.*」|.*$)"_s),
        QRegularExpression(u"\"(?:.*\"|.*$)"_s), QRegularExpression(u"'(?:.*'|.*$)"_s)};
    for (const QRegularExpression& it : quotes) {
        text.replace(it, u"“…”"_s);
    }
    return text;
}

// Why the system refused stands behind the path.
QString systemReasonBehind(const QString& text) {
    const QString reason = systemReasonIn(text);
    return reason.isEmpty() ? reason : u"（"_s + reason + u"）"_s;
}

// The name of a folder may hold whatever also ends one: nothing behind its beginning is kept.
QString withoutPaths(const QString& text) {
    static const QRegularExpression path(u"(?:^|[^A-Za-z0-9/…])(~?/(?=[^\\s/]))"_s);
    static const QRegularExpression own(u"/("_s + ownFiles + u")(?![^\\s，。；：、（）“”])"_s);
    const QRegularExpressionMatch match = path.match(text);
    if (!match.hasMatch()) {
        return text;
    }
    const QString tail = text.mid(match.capturedStart(1));
    return text.left(match.capturedStart(1)) + leftOut +
           (own.match(tail).hasMatch() ? u"/"_s + own.match(tail).captured(1) : QString()) +
           systemReasonBehind(tail);
}

QString printable(QString text) {
    text.removeIf([](QChar it) { return !it.isPrint() && !it.isSpace(); });
    return text.simplified();
}

}  // namespace

QString loggable(const QString& text) {
    const QString safe =
        withoutPaths(withoutQuoted(withoutSecrets(withoutAddresses(printable(text)))));
    return safe.size() > longestLogged ? safe.left(longestLogged) + leftOut : safe;
}

QString headOf(const QString& text) {
    static const QRegularExpression end(u"[：=]|:(?=\\s|$)| (?!…|[0-9]|(?:"_s + ownFiles +
                                        u")(?:[\\s，。；、（）]|$))"_s);
    const QString safe = loggable(text);
    const QRegularExpressionMatch match = end.match(safe);
    if (!match.hasMatch()) {
        return safe;
    }
    const QString head = safe.left(match.capturedEnd()) + leftOut;
    return systemReasonIn(head).isEmpty() ? head + systemReasonBehind(safe) : head;
}

QString shownAddress(const QString& address) {
    static const QRegularExpression parts(
        u"^([A-Za-z][A-Za-z0-9+.-]*://)([A-Za-z0-9.-]+(?::[0-9]+)?)?(.*)$"_s);
    const QRegularExpressionMatch match = parts.match(address);
    if (!match.hasMatch() || match.captured(2).isEmpty() || address.contains(u'@')) {
        return address.isEmpty() ? address : match.captured(1) + leftOut;
    }
    const QString rest = match.captured(3);
    return match.captured(1) + match.captured(2) +
           (rest.isEmpty() || rest == u"/"_s ? QString() : u"/…"_s);
}

bool isOwnFile(const QString& name) {
    static const QRegularExpression own(u"^(?:"_s + ownFiles + u')' + besideThem + u'$');
    return own.match(name).hasMatch();
}

}  // namespace guanchao
