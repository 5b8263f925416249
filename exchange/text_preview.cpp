#include "exchange/text_preview.h"

#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void testLength(const QString& name, TextPreview& preview) {
    if (isTooLong(name)) {
        preview.messages << u"主题名称太长了!名称："_s + name;
    }
}

void previewCodeLine(const LineParts& parts, const QString& separator, Connection& main,
                     TextPreview& preview) {
    const NormalCode code = normaliseCode(parts.first.toUpper());
    if (!code.wellFormed) {
        preview.messages << u"代码不正确!代码："_s + code.code;
        return;
    }
    const QStringList names = splitPieces(parts.second, separator);
    if (!shortName(main, code.code)) {
        preview.messages << u"代码不存在!代码："_s + code.code;
        return;
    }
    preview.pieces = names.size();
    for (const QString& name : names) {
        if (isDigitsOnly(name)) {
            continue;
        }
        testLength(name, preview);
        preview.rows.append({code.code, name});
    }
}

void previewThemeLine(const LineParts& parts, const QString& separator, TextPreview& preview) {
    if (isDigitsOnly(parts.first)) {
        return;
    }
    testLength(parts.first, preview);
    const QStringList codes = splitPieces(parts.second, separator);
    preview.pieces = codes.size();
    for (const QString& piece : codes) {
        const NormalCode code = normaliseCode(piece);
        if (!code.wellFormed) {
            preview.messages << u"代码不正确!代码："_s + code.code;
            return;
        }
        preview.rows.append({code.code, parts.first});
    }
}

}  // namespace

TextPreview previewLine(const QString& line, const TextSource& source, Connection& main) {
    TextPreview preview;
    const QString first = separatorOf(source.firstSeparator);
    const QString second = separatorOf(source.secondSeparator);
    const std::optional<LineParts> parts = splitLine(line, first);
    if (!parts) {
        preview.messages << u"第一行没有找到间隔!间隔："_s + first;
    } else if (source.codeFirst) {
        previewCodeLine(*parts, second, main, preview);
    } else {
        previewThemeLine(*parts, second, preview);
    }
    return preview;
}

void showPreview(const TextPreview& preview, ResultGrid& grid) {
    const GridFill fill(grid);
    grid.clear();
    grid.setCols(3);
    grid.setRows(static_cast<int>(preview.pieces) + 1);
    int col = 0;
    for (const QString& header : {u"序号"_s, u"代码"_s, u"主题名称"_s}) {
        grid.setAlignment(0, col, CellAlignment::centre);
        grid.setTextMatrix(0, col++, header);
    }
    grid.setColWidths({600, 1500, 7000});
    int row = 1;
    for (const PreviewRow& it : preview.rows) {
        grid.setInteger(row, 0, row);
        grid.setTextMatrix(row, 1, it.dm);
        grid.setTextMatrix(row, 2, it.zhutiname);
        grid.setCellForeColor(row, 2, themeColour);
        ++row;
    }
}

}  // namespace guanchao
