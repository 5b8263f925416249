// What files bring that a user, an editor or another program has written.
#include <QStringEncoder>
#include <cmath>

#include "articles/body_text.h"
#include "articles/drafts.h"
#include "base/values.h"
#include "collector/search_page.h"
#include "exchange/theme_text.h"
#include "formats/gbk.h"
#include "formats/ini_file.h"
#include "formats/initials.h"
#include "formats/text_file.h"
#include "heat/url_encode.h"
#include "services/services.h"
#include "services/stock_code.h"
#include "tests/campaign/outside_reader.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "themes/block_file.h"
#include "tools/history_builder/day_source.h"
#include "tools/history_builder/theme_members.h"
#include "utilities/tray_module.h"
#include "utilities/version_check.h"

namespace guanchao {

namespace {

constexpr qsizetype mostOfSettings = 1 << 16;  // each entry is looked for in all lines
const QString sourceFolder = QStringLiteral(GUANCHAO_SOURCE_DIR "/");

QList<QByteArray> inAllEncodings(const QString& text) {
    QStringEncoder littleEnd(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    QStringEncoder bigEnd(QStringEncoder::Utf16BE, QStringEncoder::Flag::WriteBom);
    return {gbkFromText(text), text.toUtf8(), "\xEF\xBB\xBF" + text.toUtf8(), littleEnd(text),
            bigEnd(text)};
}

// The first lines of a file of the program.
QByteArray beginningOf(const QString& file) {
    return contentOf(sourceFolder + file).left(1500);
}

void readAnyText(const QByteArray& bytes) {
    const ReadText read = readText(bytes);
    requireWholeCharacters(read.text);
    requireSense(readText(bytesOf(read.text)).text == read.text, "写回去以后读出来不一样");
    for (const QString& line : linesOf(read.text)) {
        requireSense(!line.contains(u'\n') && !line.contains(u'\r'), "一行里还有换行");
        for (const QString& paragraph : paragraphsOf(line)) {
            const QStringList pieces = piecesOf(paragraph);
            requireSense(pieces.join(QString()) == paragraph, "各段拼起来不是原文");
            requireWholeCharacters(pieces.join(u' '));
        }
    }
}

void readGbk(const QByteArray& bytes) {
    const QString text = textFromGbk(bytes);
    requireWholeCharacters(text);
    requireSense(textFromGbk(gbkFromText(text)) == text, "写回去以后读出来不一样");
    requireSense(!searchPage(u"/s?wd=tihuandm"_s, text.left(1000)).contains(u' '), "网址里有空格");
}

void readThemeLines(const QByteArray& bytes) {
    const QStringList lines = linesOf(readText(bytes).text);
    for (const QString& line : lines.first(qMin(lines.size(), 20))) {
        for (const QString& entry : separatorEntries() + QStringList{u"主题"_s}) {
            const QString separator = separatorOf(entry);
            const LineParts parts = splitLine(line, separator).value_or(LineParts());
            const QStringList pieces = splitPieces(parts.second, separator);
            for (const QString& piece : QStringList(parts.first) + pieces) {
                requireSense(normaliseCode(piece).code.size() <= 8, "代码太长");
            }
        }
    }
}

// What is written of the codes is read as the same.
void readBlockLines(const QByteArray& bytes) {
    const QStringList lines = linesOf(readText(bytes).text);
    const BlockFile file = readBlock(lines);
    requireSense(file.stocks.size() + file.unread.size() <= lines.size(), "多读出了行");
    QStringList codes;
    for (const BlockStock& it : file.stocks) {
        requireSense(it.code.size() == codeDigits || isWholeCode(it.code), "读出不是代码的代码");
        if (isWholeCode(it.code)) {
            codes << it.code;
        }
    }
    const QByteArray written = blockBytes(u"x.EBK"_s, codes);
    const BlockFile again = readBlock(linesOf(QString::fromLatin1(written)));
    requireSense(textsOf(again.stocks, &BlockStock::code) == codes, "代码写出再读成了别的");
}

void readTyped(const QByteArray& bytes) {
    const QString text = readText(bytes).text;
    const double number = numericPrefix(text);
    requireSense(std::isfinite(number), "读出没有尽头的数");
    for (const QString& shown : {numberText(number), twoDecimals(number), noDecimals(number)}) {
        requireSense(readsAsNumber(shown), "数字显示成了别的");
    }
    const double again = numericPrefix(numberText(number));
    requireSense(std::abs(again - number) <= std::abs(number) * 1e-14 + 1e-300,
                 "数字写出再读成了另一个");
    requireSense(std::isfinite(toTwoDecimals(number)) && std::isfinite(roundTo(number, 2)),
                 "舍入出没有尽头的数");
    requireSense(
        wholeNumber16(text).value_or(0) == wholeNumber32(text).value_or(0) || !wholeNumber16(text),
        "两种整数读法不一样");
    requireSense(!quoted(text).contains(QChar::Null), "语句里有 NUL");
}

void readName(const QByteArray& bytes) {
    static const Initials initials(readInitialsExceptions(sourceFolder + u"data/initials.csv"_s));
    const QString name = shortened(readText(bytes).text, longestShownName);
    requireWholeCharacters(initials.of(name));
}

// What is written is there, what was there stays.
void readIni(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes.left(mostOfSettings));
    const std::optional<QString> other = IniFile(path).value(u"quote"_s, u"host"_s);
    FakeTray desktopTray;
    Globals globals;
    globals.yingyongmulu = QFileInfo(path).path() + u'/';
    TrayModule(desktopTray, globals).remove();
    const IniFile again(path);
    requireSense(again.value(u"read"_s, u"jintuopan"_s) == u"0", "写进去的读不出来");
    requireSense(again.value(u"quote"_s, u"host"_s) == other, "别的项变了");
}

void readServicesFile(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes.left(mostOfSettings));
    const Services all = readServices(path);
    const QList<Service> single = {all.chart, all.stockpage, all.sitepage, all.newspage,
                                   all.vendor};
    for (const Service& it :
         single + all.quote + all.history + all.factors + all.fundamentals + all.search) {
        requireSense(it.timeoutSeconds >= 0 && it.timeoutSeconds <= 3600, "等待时间不在范围内");
        requireSense(it.ahead >= 1 && it.ahead <= 6, "同时的请求数不在范围内");
    }
}

void readCollector(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes.left(mostOfSettings));
    const CollectorSettings it = readCollectorSettings(path);
    requireSense(it.pause >= 0 && it.randomPause >= 0 && it.giveUpAfter >= 0 &&
                     it.timeoutSeconds >= 1 && std::isfinite(it.weights.zhangzi),
                 "设置不在范围内");
    SearchPage("<p>百度为您找到相关结果约1,234,567个 没有找到与铜相关的网页</p>").results(it);
}

void readHistory(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes);
    DaySource(path, VolumeUnit::shares, QDate(2026, 11, 24)).read([](const DayRow& it) {
        requireSense(it.dm.size() == 8 && it.day.isValid(), "读出不是日期的一天");
        for (const qint64 price : {it.open, it.high, it.low, it.close}) {
            requireSense(price >= 1 && price <= 100000000, "价格不在范围内");
        }
        requireSense(std::isfinite(it.volume) && std::isfinite(it.turnover) && it.factor > 0,
                     "数字不在范围内");
    });
}

void readMembers(const QString& path, const QByteArray& bytes) {
    writeFile(path, bytes);
    SkippedRows skipped;
    for (const ThemeMember& it : readThemeMembers(path, skipped)) {
        requireSense(it.dm.size() == 8, "读出不是代码的代码");
    }
}

void readDraft(const QString& folder, const QByteArray& bytes) {
    const QString path = folder + u"/草稿/x.json"_s;
    writeFile(path, bytes);
    const QList<LeftDraft> left = leftDrafts(folder + u'/');
    if (!left.isEmpty()) {
        putAside(path, left.first().draft);
        const QList<LeftDraft> again = leftDrafts(folder + u'/');
        requireSense(again.size() == 1 && again.first().draft.typed == left.first().draft.typed,
                     "草稿再存一次读出来不一样");
    }
}

// A page of the vendor opens only behind the word of a new version.
void readVersion(const QString& folder, const QByteArray& bytes) {
    Globals globals;
    globals.yingyongmulu = folder + u'/';
    FakeHttp http;
    http.answer = [&](const QString&) { return bytes; };
    FakeDialogs dialogs;
    FakeShell shell;
    const Service vendor;
    VersionCheck check(globals, vendor, http, dialogs, shell);
    outcomeOf(check.run(u"观潮台(V3.7)"_s, {}));
    requireSense(dialogs.shown.size() == shell.opened.size(), "没有说有新版本就打开了网页");
}

}  // namespace

QList<OutsideReader> fileReaders(const QString& folder) {
    const auto at = [folder](const QString& file, void (*read)(const QString&, const QByteArray&)) {
        return [=](const QByteArray& bytes) { read(folder + file, bytes); };
    };
    const QString themes = u"SH600519\t白酒\t消费\n000001 银行,保险\n白酒：600519、000858\n"_s;
    const QString blocks =
        u"代码,名称,备注\r\n1600000\r\n600519.SH,贵州茅台,\"等,看\"\r\n'000001;平安\r\n"_s;
    const QString ini = u"[read]\njintuopan=1\ndm=SH600000\n[quote]\nhost=http://甲\n"_s;
    const QString version = u"[chaoxin]\nbanben=3.8 版\ndownurl='http://x/?a=b;c,d'\n"_s;
    const QByteArray services = beginningOf(u"data/services.ini"_s);
    const QByteArray collector =
        "[period]\none=&a\n[page]\nresults=约?\\s*([0-9][0-9,]*)\\s*个\nnone=没有找到.{0,60}相关\n"
        "[weights]\nbaodie=-0.5\n[pace]\npause=0.5\nrandom=0\nretries=1,2.5\ntimeout=9\n";
    const QByteArray days =
        "dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz\n"
        "SH600000,2026-11-19,12.34,12.5,12,12.345,12.3,7000,86380.5,1.05\n"
        "SZ000001,2026-11-20,9.99,10,9,9.5,12.35,8000,76000,1.1\n";
    const QByteArray draft =
        "{\"time\":\"2026-11-24T10:00:00\",\"read\":{\"id\":\"7\",\"year\":\"2026\"},"
        "\"typed\":{\"id\":\"7\",\"title\":\"周报\",\"body\":\"一\\r\\n\\ud83d\\ude00<b>\"}}";
    const QByteArray numbers = "12.345 -1e10 0.1+2 99.995";
    return {
        {"texts", "各种编码的文本文件", 120000, false,
         inAllEncodings(themes) << beginningOf(u"data/主题txt文件示例.txt"_s), readAnyText},
        {"gbk", "GBK 和搜索网址", 50000, false, inAllEncodings(themes), readGbk},
        {"theme_lines", "主题文本的行", 60000, false, inAllEncodings(themes), readThemeLines},
        {"blocks", "板块文件的行", 30000, false, inAllEncodings(blocks), readBlockLines},
        {"numbers", "键入的数字", 60000, false, {numbers, "１２", " 7 "}, readTyped},
        {"names", "简称的声母", 30000, false, inAllEncodings(u"*ST中安 贵州茅台 重庆银行"_s),
         readName},
        {"ini", "read.ini", 35000, false, inAllEncodings(ini), at(u"/read.ini"_s, readIni)},
        {"services", "services.ini", 30000, false, {services}, at(u"/s.ini"_s, readServicesFile)},
        {"collector", "caijiqi.ini", 30000, true, {collector}, at(u"/c.ini"_s, readCollector)},
        {"history", "日线 CSV", 35000, true, {days}, at(u"/d.csv"_s, readHistory)},
        {"members", "主题成员 CSV", 25000, true, inAllEncodings(u"zhutiname,dm\n白酒,SH600519\n"_s),
         at(u"/m.csv"_s, readMembers)},
        {"drafts", "草稿", 25000, true, {draft}, at({}, readDraft)},
        {"version", "版本文件", 30000, false, inAllEncodings(version), at({}, readVersion)},
    };
}

}  // namespace guanchao
