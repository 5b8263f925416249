#include "formats/html_page.h"

#include <libxml/HTMLparser.h>

#include <QRegularExpression>
#include <algorithm>
#include <memory>

#include "formats/page_text.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

Document parse(const QByteArray& page) {
    // Browsers need no semicolon behind it, and old pages have none.
    static const QRegularExpression openBlank(u"&nbsp(?!;)"_s);
    const QByteArray text = pageText(page).replace(openBlank, u"&nbsp;"_s).toUtf8();
    return Document(htmlReadMemory(text.constData(), static_cast<int>(text.size()), nullptr,
                                   "UTF-8",
                                   HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                       HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC));
}

bool isOneOf(const xmlNode* node, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(), [node](const char* name) {
        return xmlStrEqual(node->name, BAD_CAST name) != 0;
    });
}

// Calls `visit` for the elements within the node; it answers whether to go into the element.
template <typename Visit>
void walk(const xmlNode* parent, const Visit& visit) {
    for (const xmlNode* node = parent->children; node; node = node->next) {
        if (node->type == XML_ELEMENT_NODE && visit(node)) {
            walk(node, visit);
        }
    }
}

bool isSpace(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

// Puts words together as a browser shows them: blanks and line ends of the source are one blank,
// blocks stand on lines of their own, cells are apart.
class SeenText {
public:
    explicit SeenText(const xmlNode* node) { addContent(node); }

    // No-break spaces, with which pages fill their empty cells, are blanks to the eye.
    QString text() const { return QString(text_).replace(QChar::Nbsp, u' ').trimmed(); }

private:
    void addContent(const xmlNode* parent) {
        for (const xmlNode* node = parent->children; node; node = node->next) {
            if (node->type == XML_TEXT_NODE) {
                addWords(QString::fromUtf8(reinterpret_cast<const char*>(node->content)));
            } else if (node->type == XML_ELEMENT_NODE) {
                addElement(node);
            }
        }
    }

    void addElement(const xmlNode* node) {
        if (isOneOf(node, {"script", "style", "title"})) {
            return;
        }
        if (isOneOf(node, {"br"})) {
            dropBlank();
            text_ += u'\n';
            return;
        }
        if (isOneOf(node, {"td", "th"})) {
            separateBy(u'\t');
            addContent(node);
            return;
        }
        const htmlElemDesc* known = htmlTagLookup(node->name);
        const bool isBlock = known && !known->isinline;
        if (isBlock) {
            separateBy(u'\n');
        }
        addContent(node);
        if (isBlock) {
            separateBy(u'\n');
        }
    }

    void addWords(const QString& words) {
        for (const QChar c : words) {
            if (!isSpace(c)) {
                text_ += c;
            } else {
                separateBy(u' ');
            }
        }
    }

    // Nothing is needed at the beginning, or where something separates already.
    void separateBy(QChar separator) {
        if (separator != u' ') {
            dropBlank();
        }
        if (!text_.isEmpty() && !isSpace(text_.back())) {
            text_ += separator;
        }
    }

    void dropBlank() {
        if (text_.endsWith(u' ')) {
            text_.chop(1);
        }
    }

    QString text_;
};

bool isCell(const xmlNode* node) {
    return isOneOf(node, {"td", "th"});
}

struct Row {
    int place;  // a heading above, a footing below all others
    QStringList cells;
};

Row emptyRowIn(const xmlNode* section) {
    return {isOneOf(section, {"thead"}) ? 0 : isOneOf(section, {"tfoot"}) ? 2 : 1, {}};
}

QStringList cellsOf(const xmlNode* row) {
    QStringList cells;
    walk(row, [&cells](const xmlNode* node) {
        if (isCell(node)) {
            cells << SeenText(node).text();
        }
        return !isCell(node) && !isOneOf(node, {"table"});
    });
    return cells;
}

// Cells outside of any row make one together, up to the next row.
QList<Row> rowsOf(const xmlNode* table) {
    QList<Row> rows;
    const xmlNode* looseIn = nullptr;
    walk(table, [&](const xmlNode* node) {
        if (isOneOf(node, {"tr"})) {
            rows << emptyRowIn(node->parent);
            rows.last().cells = cellsOf(node);
            looseIn = nullptr;
        } else if (isCell(node)) {
            if (looseIn != node->parent) {
                rows << emptyRowIn(node->parent);
                looseIn = node->parent;
            }
            rows.last().cells << SeenText(node).text();
        }
        return !isCell(node) && !isOneOf(node, {"tr", "table"});
    });
    return rows;
}

HtmlTable tableOf(const xmlNode* node) {
    QList<Row> rows = rowsOf(node);
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row& one, const Row& other) { return one.place < other.place; });
    HtmlTable table;
    for (const Row& row : rows) {
        table << row.cells;
    }
    return table;
}

}  // namespace

HtmlPage readHtmlPage(const QByteArray& page) {
    const Document document = parse(page);
    const xmlNode* root = document ? xmlDocGetRootElement(document.get()) : nullptr;
    if (!root) {
        return {};
    }
    HtmlPage result{.title = {}, .text = SeenText(root).text(), .tables = {}};
    walk(root, [&result](const xmlNode* node) {
        if (isOneOf(node, {"title"})) {
            result.title += SeenText(node).text();
        } else if (isOneOf(node, {"table"})) {
            result.tables << tableOf(node);
        }
        return true;
    });
    return result;
}

}  // namespace guanchao
