#include "collector/settings_check.h"

#include <QSet>

#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

class Checker {
public:
    explicit Checker(const KnownEntries& known) : known_(known) {}

    QList<SettingsComplaint> check(const QStringList& lines) {
        for (const QString& line : lines) {
            ++line_;
            const QString text = line.trimmed();
            if (text.startsWith(u'[')) {
                takeSection(text);
            } else if (!text.isEmpty() && !text.startsWith(u';') && !text.startsWith(u'#')) {
                takeEntry(text);
            }
        }
        return complaints_;
    }

private:
    void takeSection(const QString& text) {
        section_ = text.mid(1, text.indexOf(u']') - 1).trimmed().toLower();
        entries_.clear();
        if (!text.contains(u']')) {
            complain(u"%1 少了后面的 ]"_s.arg(text), u"一节的名字少了后面的 ]"_s);
        } else if (!known_.contains(section_)) {
            complain(u"没有 [%1] 这一节，只有 %2"_s.arg(section_, sections()), u"没有这样的一节"_s);
        } else if (sections_.contains(section_)) {
            const QString words = u"[%1] 前面已有一节，请合成一节"_s.arg(section_);
            complain(words, words);
        }
        sections_ << section_;
    }

    void takeEntry(const QString& text) {
        const QString name = text.section(u'=', 0, 0).trimmed().toLower();
        if (!text.contains(u'=')) {
            complain(u"“%1”不是“名字=值”"_s.arg(text), u"没有等号"_s);
        } else if (section_.isEmpty()) {
            complain(u"%1 写在所有的节之前，请移到它的一节 %2里"_s.arg(name, sectionOf(name)),
                     u"写在所有的节之前"_s);
        } else if (known_.contains(section_) && !known_[section_].contains(name)) {
            complain(u"[%1] 里没有 %2 这一项，只有 %3"_s.arg(section_, name,
                                                             known_[section_].join(u'、')),
                     u"[%1] 里没有这一项"_s.arg(section_));
        } else if (entries_.contains(name)) {
            complain(u"%1 前面已写过"_s.arg(name), u"这一项前面已写过"_s);
        }
        entries_ << name;
    }

    QString sections() const {
        QStringList names;
        for (const QString& it : known_.keys()) {
            names << u'[' + it + u']';
        }
        names.sort();
        return names.join(u'、');
    }

    QString sectionOf(const QString& name) const {
        for (auto it = known_.cbegin(); it != known_.cend(); ++it) {
            if (it.value().contains(name)) {
                return u'[' + it.key() + u"] "_s;
            }
        }
        return {};
    }

    void complain(const QString& what, const QString& forLog) {
        complaints_ << SettingsComplaint{u"第 %1 行：%2。"_s.arg(line_).arg(what),
                                         u"第 %1 行：%2"_s.arg(line_).arg(forLog)};
    }

    const KnownEntries& known_;
    int line_ = 0;
    QString section_;
    QSet<QString> sections_;
    QSet<QString> entries_;
    QList<SettingsComplaint> complaints_;
};

}  // namespace

QList<SettingsComplaint> complaintsOf(const QByteArray& file, const KnownEntries& known) {
    if (file.contains('\0') || readText(file).encoding == u"UTF-16"_s) {
        const QString words = u"第 1 行起：文件是 UTF-16 编码，请用文本编辑器另存为 UTF-8。"_s;
        return {{words, words}};
    }
    return Checker(known).check(linesOf(readText(file).text));
}

}  // namespace guanchao
