#include "tools/practice_market/practice_pages.h"

#include <QRegularExpression>
#include <cmath>

#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

namespace {

// What a company reports, drawn from its code and its price.
struct Report {
    QDate day;
    double mqlt;   // 亿 shares
    double mgsy;   // yuan
    double mgjzc;  // yuan
};

QDate lastQuarterEnd(const QDate& today) {
    const int quarterMonth = (today.month() - 1) / 3 * 3 + 1;
    return QDate(today.year(), quarterMonth, 1).addDays(-1);
}

Report reportOf(const PracticeQuotes& quotes, const QString& code, const QDateTime& now) {
    const double price = quotes.minutes(code, now).value_or(PracticeMinutes()).formerClose;
    const auto between = [&](quint64 index, double least, double most) {
        return std::lerp(least, most, quotes.numberOf(code, index));
    };
    // About one company in eight makes a loss.
    return {lastQuarterEnd(now.date()), between(11, 0.6, 60), price * between(12, -0.01, 0.07),
            price * between(13, 0.1, 0.9)};
}

QString pageOf(const QString& title, const QString& body) {
    return QStringLiteral(
               "<!DOCTYPE html>\n<html><head><meta charset=\"GB18030\"><title>%1</title>"
               "<style>body{font-family:sans-serif;margin:24px;color:#222}"
               "table{border-collapse:collapse}td{border:1px solid #ccc;padding:6px 14px}"
               "</style></head>\n<body><h1>%1</h1>\n%2</body></html>\n")
        .arg(title, body);
}

QString row(const QString& name, const QString& value) {
    return QStringLiteral("<tr><td>%1</td><td>%2</td></tr>\n").arg(name, value);
}

QString tableOf(const Report& report) {
    return QStringLiteral("<table>\n") +
           row(QStringLiteral("报告期"), report.day.toString(Qt::ISODate)) +
           row(QStringLiteral("流通股（亿）"), QString::number(report.mqlt, 'f', 2)) +
           row(QStringLiteral("每股收益（元）"), QString::number(report.mgsy, 'f', 3)) +
           row(QStringLiteral("每股净资产（元）"), QString::number(report.mgjzc, 'f', 2)) +
           QStringLiteral("</table>\n");
}

QString newsPage(const QString& title, const Report& report) {
    const QString script =
        QStringLiteral(
            "<script>\nvar stockF10ZxzbJson = [{\"jzrq\":\"%1\",\"zgb\":\"%2\",\"mqlt\":\"%3\","
            "\"mgsy\":\"%4\",\"mgjzc\":\"%5\",\"gdzs\":\"--\"}];\nvar stockDstx = [];\n</script>\n")
            .arg(report.day.toString(Qt::ISODate), QString::number(report.mqlt * 1.5, 'f', 2),
                 QString::number(report.mqlt, 'f', 2), QString::number(report.mgsy, 'f', 3),
                 QString::number(report.mgjzc, 'f', 2));
    return pageOf(title, tableOf(report) + script);
}

QString chartPage(const QString& title, const QString& chartPath) {
    return pageOf(title, QStringLiteral("<img src=\"%1\" alt=\"\">\n").arg(chartPath));
}

QString withExchange(const QString& number) {
    return (number.startsWith(u'6') ? QStringLiteral("sh") : QStringLiteral("sz")) + number;
}

QString proxyRow(const QStringList& cells) {
    return QStringLiteral("<tr><td>%1</td></tr>\n").arg(cells.join(QLatin1String("</td><td>")));
}

}  // namespace

QString practicePage(const PracticeQuotes& quotes, const QString& path, const QDateTime& now) {
    static const QRegularExpression stock(QStringLiteral("(s[hz])?(\\d{6})"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = stock.match(path);
    const QString number = match.captured(2);
    const QString code =
        match.captured(1).isEmpty() ? withExchange(number) : match.captured().toLower();
    const QString name = quotes.name(code);
    if (name.isEmpty()) {
        return {};
    }
    const QString title = QStringLiteral("%1（%2）").arg(name, number);
    const Report report = reportOf(quotes, code, now);
    if (path.startsWith(QLatin1String("/realstock/"))) {
        return chartPage(title, QStringLiteral("/newchart/min/n/%1.gif").arg(code));
    }
    if (path.endsWith(QLatin1String("/cpbd.shtml"))) {
        return chartPage(title, QStringLiteral("/newchart/daily/n/%1.gif").arg(code));
    }
    if (path.startsWith(QLatin1String("/news/"))) {
        return newsPage(title, report);
    }
    if (path.endsWith(QLatin1String(".html"))) {
        return chartPage(title, QStringLiteral("/newchart/min/n/%1.gif").arg(code));
    }
    return pageOf(title + QStringLiteral(" 公司资料"), tableOf(report));
}

QString practiceKeyData(const PracticeQuotes& quotes, const QStringList& lowerCaseCodes,
                        const QDateTime& now) {
    QString lines;
    for (const QString& code : lowerCaseCodes) {
        const Report report = reportOf(quotes, code.first(8), now);
        const QString shares = QString::number(report.mqlt * 10000, 'f', 4);
        const QString values =
            QStringLiteral("A,,%1,%1,%2,%3,0,%4,%4,%4,0,CNY")
                .arg(QString::number(report.mgsy, 'f', 4), QString::number(report.mgsy / 4, 'f', 4),
                     QString::number(report.mgjzc, 'f', 4), shares);
        lines += QStringLiteral("var hq_str_%1=\"%2\";\n").arg(code, values);
    }
    return lines;
}

QString practiceProxyPage() {
    const QString none = QStringLiteral("&nbsp;");
    return pageOf(
        QStringLiteral("代理服务器列表"),
        QStringLiteral("<table>\n") +
            proxyRow({QStringLiteral("代理服务器地址"), QStringLiteral("端口"),
                      QStringLiteral("备注"), QStringLiteral("用户名"), QStringLiteral("密码")}) +
            proxyRow({QStringLiteral("192.0.2.18"), QStringLiteral("8080"),
                      QStringLiteral("北京 电信"), none, none}) +
            proxyRow({QStringLiteral("198.51.100.7"), QStringLiteral("3128"),
                      QStringLiteral("上海 联通"), QStringLiteral("lianxi"),
                      QStringLiteral("mima123")}) +
            proxyRow({QStringLiteral("203.0.113.42"), QStringLiteral("80"),
                      QStringLiteral("广州 移动"), none, none}) +
            proxyRow({QStringLiteral("proxy.example.com"), QStringLiteral("808"),
                      QStringLiteral("教育网<br>速度较快")}) +
            QStringLiteral("</table>\n"));
}

}  // namespace guanchao
