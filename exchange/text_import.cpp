#include "exchange/text_import.h"

#include <QFileInfo>

#include "base/values.h"
#include "exchange/import_on_copies.h"
#include "exchange/text_preview.h"
#include "formats/text_file.h"
#include "services/stock_code.h"
#include "store/store_error.h"
#include "themes/membership.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostLinesNamed = 20;

// A name that begins with a number from here on, such as a year, is no theme.
constexpr double firstNumberOfNoName = 10;

// The import of line after line.
class LineImport {
public:
    LineImport(Connection& copies, const TextSource& source, const QString& date,
               ExchangeSteps& steps)
        : copies_(copies),
          codeFirst_(source.codeFirst),
          first_(separatorOf(source.firstSeparator)),
          second_(separatorOf(source.secondSeparator)),
          date_(date),
          steps_(steps) {}

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
        steps_.setJc(*jc);
        for (const QString& name : splitPieces(parts.second, second_)) {
            if (!isDigitsOnly(name) && !isTooLong(name) &&
                numericPrefix(name) < firstNumberOfNoName) {
                add(name, code.code, *jc);
            }
        }
    }

    std::optional<QString> shortName(const QString& dm) {
        std::optional<QString> jc;
        passingOver([&] { jc = guanchao::shortName(copies_, dm); });
        return jc;
    }

    void add(const QString& name, const QString& dm, const QString& jc) {
        passingOver([&] { count_ += joinIfMissing(copies_, {name, dm, jc, date_}) ? 1 : 0; });
        steps_.endIfStopped();
    }

    // A row that the store refuses costs itself only. What ails the store or the disk ends the
    // import: rows would be missing unsaid.
    template <typename Statements>
    void passingOver(Statements statements) {
        try {
            statements();
        } catch (const StoreError& failure) {
            if (failure.fault() != StoreFault::other) {
                throw;
            }
        }
    }

    Connection& copies_;
    bool codeFirst_;
    QString first_;
    QString second_;
    QString date_;
    ExchangeSteps& steps_;
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

// What the file was taken for, since a wrong guess makes themes of nonsense.
QString encodingWords(const QString& encoding) {
    return encoding.isEmpty() ? encoding : u"文件按 "_s + encoding + u" 读取。"_s;
}

int mergeLines(const Stores& stores, const TextSource& source, const QStringList& lines,
               const QString& date, ExchangeWork& work) {
    const AddRows addRows = [&](Connection& copies, ExchangeSteps& steps) {
        LineImport import(copies, source, date, steps);
        steps.expect(static_cast<int>(lines.size()));
        for (const QString& line : lines) {
            import.take(line);
            steps.stepDone();
        }
        return import.count();
    };
    return importOnCopies(stores.main, {{u"dzhzhuti"_s, u"zhutiname,dm"_s}, {u"dmb"_s, u"dm,jc"_s}},
                          addRows, work);
}

}  // namespace

ImportedText mergeText(const Stores& stores, const TextSource& source, const QString& date,
                       ExchangeWork& work) {
    const Activity activity(u"导入文本主题库"_s);
    const auto [lines, encoding] = readTextFile(source.path);
    const int count = mergeLines(stores, source, lines, date, work);
    if (count > 0) {
        const Activity stamping(u"导入文本主题库"_s,
                                u"主题已经导入，只有主题库更新时间没有写入。"_s);
        Connection store = stores.main.open();
        stampThemes(store, date);
    }
    return {count, encoding, brokenLinesText(lines)};
}

TextImport::TextImport(const Stores& stores, const Clock& clock, Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), clock_(clock), dialogs_(dialogs), run_(run) {}

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

QString TextImport::preview(const TextSource& source, ResultGrid& grid) {
    if (!isUsable(source)) {
        return {};
    }
    TextPreview preview;
    QString encoding;
    {
        const Activity activity(u"预览文本主题库"_s);
        const TextFile file = readTextFile(source.path);
        const QString line = file.lines.value(0);
        encoding = file.encoding;
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
    return encodingWords(encoding);
}

QCoro::Task<> TextImport::importText(TextSource source, std::stop_token stop) {
    if (!isUsable(source)) {
        co_return;
    }
    const auto job = [stores = stores_, source, date = timeText(clock_.now())](ExchangeWork& work) {
        return mergeText(stores, source, date, work);
    };
    const std::optional<ImportedText> imported = co_await run_.run(u"导入文本主题库"_s, job, stop);
    if (!imported) {
        dialogs_.tell(importStopped);
        co_return;
    }
    const QString words = encodingWords(imported->encoding);
    dialogs_.tell(u"导入文本主题库完成，共导入新的数据："_s + QString::number(imported->count) +
                  u"条"_s + (words.isEmpty() ? words : u"\n"_s + words));
    if (!imported->brokenLines.isEmpty()) {
        dialogs_.tell(imported->brokenLines);
    }
}

}  // namespace guanchao
