#include "exchange/text_import.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include "base/values.h"
#include "exchange/text_file.h"
#include "exchange/text_preview.h"
#include "market/stock_code.h"
#include "store/recordset.h"
#include "store/sqlite.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostLinesNamed = 20;

// A name that begins with a number from here on, such as a year, is no theme.
constexpr double firstNumberOfNoName = 10;

// The import of line after line in one transaction.
class LineImport {
public:
    LineImport(Connection& main, const TextSource& source, const QString& date, ExchangeRun& run)
        : main_(main),
          codeFirst_(source.codeFirst),
          first_(separatorOf(source.firstSeparator)),
          second_(separatorOf(source.secondSeparator)),
          date_(date),
          run_(run) {}

    void take(const QString& line) {
        const std::optional<LineParts> parts = splitLine(line, first_);
        if (!parts || isBroken(line)) {
            return;
        }
        codeFirst_ ? takeCodeLine(*parts) : takeThemeLine(*parts);
    }

    int count() const { return count_; }

private:
    // A malformed code abandons the rest of the line. Codes are not looked up here.
    void takeThemeLine(const LineParts& parts) {
        if (isDigitsOnly(parts.first) || isTooLong(parts.first)) {
            return;
        }
        for (const QString& piece : splitPieces(parts.second, second_)) {
            const NormalCode code = normaliseCode(piece);
            if (!code.wellFormed) {
                return;
            }
            add(parts.first, code.code, {});
        }
    }

    void takeCodeLine(const LineParts& parts) {
        const NormalCode code = normaliseCode(parts.first.toUpper());
        if (!code.wellFormed) {
            return;
        }
        const std::optional<QString> jc = shortName(code.code);
        if (!jc) {
            return;
        }
        run_.setJc(*jc);
        for (const QString& name : splitPieces(parts.second, second_)) {
            if (!isDigitsOnly(name) && !isTooLong(name) &&
                numericPrefix(name) < firstNumberOfNoName) {
                add(name, code.code, *jc);
            }
        }
    }

    std::optional<QString> shortName(const QString& dm) {
        std::optional<QString> jc;
        passingOver([&] { jc = guanchao::shortName(main_, dm); });
        return jc;
    }

    void add(const QString& name, const QString& dm, const QString& jc) {
        passingOver([&] {
            const Recordset present(main_, u"select zhutiname,dm from dzhzhuti where dm='"_s + dm +
                                               u"' and zhutiname='"_s + name + u"'"_s);
            if (present.atEnd()) {
                main_.execute(u"insert into dzhzhuti(zhutiname,dm,jc,ztktime) values('"_s + name +
                              u"','"_s + dm + u"','"_s + jc + u"','"_s + date_ + u"')"_s);
                ++count_;
            }
        });
        run_.breathe();
    }

    // A failed statement costs its row only. Some failures, such as a full disk, have made the
    // store roll back everything: these end the run.
    template <typename Statements>
    void passingOver(Statements statements) {
        try {
            statements();
        } catch (const StoreError&) {
            if (sqlite3_get_autocommit(main_.handle()) != 0) {
                throw;
            }
        }
    }

    Connection& main_;
    bool codeFirst_;
    QString first_;
    QString second_;
    QString date_;
    ExchangeRun& run_;
    int count_ = 0;
};

// Empty if no line is broken.
QString brokenLinesText(const QStringList& lines) {
    QStringList numbers;
    for (qsizetype at = 0; at < lines.size(); ++at) {
        if (isBroken(lines[at])) {
            numbers << QString::number(at + 1);
        }
    }
    if (numbers.isEmpty()) {
        return {};
    }
    const QString more =
        numbers.size() > mostLinesNamed ? u"……共 %1 行"_s.arg(numbers.size()) : QString();
    return u"下列行有无法识别的字节，没有导入：\n第 "_s +
           numbers.first(qMin(numbers.size(), mostLinesNamed)).join(u"、"_s) + u" 行"_s + more;
}

}  // namespace

TextImport::TextImport(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                       ExchangeRun& run)
    : stores_(stores), globals_(globals), clock_(clock), dialogs_(dialogs), run_(run) {}

// The path stands behind all three messages.
bool TextImport::isUsable(const TextSource& source) {
    if (!QFileInfo::exists(source.path)) {
        dialogs_.tell(u"文本主题库没找到!"_s + source.path);
        return false;
    }
    if (source.firstSeparator.isEmpty()) {
        dialogs_.tell(u"没有选择主题名和代码的分隔符号!"_s + source.path);
        return false;
    }
    if (source.secondSeparator.isEmpty()) {
        dialogs_.tell(u"没有选择第二部分的分隔符号!"_s + source.path);
        return false;
    }
    return true;
}

void TextImport::preview(const TextSource& source, ResultGrid& grid) {
    if (!isUsable(source)) {
        return;
    }
    TextPreview preview;
    {
        const Activity activity(u"预览文本主题库"_s);
        const QString line = readLines(source.path).value(0);
        Connection main = stores_.main.open();
        preview = previewLine(line, source, main);
        if (isBroken(line)) {
            preview.messages << u"第一行有无法识别的字节，导入时会跳过这一行。"_s;
        }
    }
    showPreview(preview, grid);
    for (const QString& message : preview.messages) {
        dialogs_.tell(message);
    }
}

void TextImport::importText(const TextSource& source) {
    if (!isUsable(source)) {
        return;
    }
    const Activity activity(u"导入文本主题库"_s);
    QString brokenLines;
    int count = 0;
    const bool complete = run_.run([&] {
        const QStringList lines = readLines(source.path);
        brokenLines = brokenLinesText(lines);
        count = importLines(source, lines);
    });
    if (!complete) {
        dialogs_.tell(importStopped);
        return;
    }
    dialogs_.tell(u"导入文本主题库完成，共导入新的数据："_s + QString::number(count) + u"条"_s);
    if (!brokenLines.isEmpty()) {
        dialogs_.tell(brokenLines);
    }
}

int TextImport::importLines(const TextSource& source, const QStringList& lines) {
    Connection main = stores_.main.open();
    const QString date = timeText(clock_.now());
    LineImport import(main, source, date, run_);
    {
        const QScopedValueRollback busy(globals_.hqmang, qint16(1));
        Transaction transaction = longTransaction(main);
        run_.expect(static_cast<int>(lines.size()));
        for (const QString& line : lines) {
            import.take(line);
            run_.rowDone();
        }
        transaction.commit();
    }
    if (import.count() > 0) {
        const Activity activity(u"导入文本主题库"_s,
                                u"主题已经导入，只有主题库更新时间没有写入。"_s);
        main.execute(u"update tempcanshu set xiugaizhutitime='"_s + date + u"'"_s);
    }
    return import.count();
}

}  // namespace guanchao
