#include "platform/html_tables.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <memory>

#include "platform/gbk.h"
#include "platform/page_charset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

Document parse(const QByteArray& page) {
    const QByteArray text = declaredCharset(page).startsWith(u"utf"_s)
                                ? QString::fromUtf8(page).toUtf8()
                                : textFromGbk(page).toUtf8();
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
        if (isOneOf(node, {"script", "style"})) {
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

int placeOf(const xmlNode* row) {
    return isOneOf(row->parent, {"thead"}) ? 0 : isOneOf(row->parent, {"tfoot"}) ? 2 : 1;
}

QList<const xmlNode*> rowsOf(const xmlNode* table) {
    QList<const xmlNode*> rows;
    walk(table, [&rows](const xmlNode* node) {
        const bool isRow = isOneOf(node, {"tr"});
        if (isRow) {
            rows << node;
        }
        return !isRow && !isOneOf(node, {"table"});
    });
    std::stable_sort(rows.begin(), rows.end(), [](const xmlNode* one, const xmlNode* other) {
        return placeOf(one) < placeOf(other);
    });
    return rows;
}

QStringList cellsOf(const xmlNode* row) {
    QStringList cells;
    walk(row, [&cells](const xmlNode* node) {
        const bool isCell = isOneOf(node, {"td", "th"});
        if (isCell) {
            cells << SeenText(node).text();
        }
        return !isCell && !isOneOf(node, {"table"});
    });
    return cells;
}

HtmlTable tableOf(const xmlNode* node) {
    HtmlTable table;
    for (const xmlNode* row : rowsOf(node)) {
        table << cellsOf(row);
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
    HtmlPage result{.text = SeenText(root).text(), .tables = {}};
    walk(root, [&result](const xmlNode* node) {
        if (isOneOf(node, {"table"})) {
            result.tables << tableOf(node);
        }
        return true;
    });
    return result;
}

}  // namespace guanchao
