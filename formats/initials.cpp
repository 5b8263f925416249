#include "formats/initials.h"

#include <unicode/translit.h>

#include <algorithm>
#include <stdexcept>

#include "formats/seed_list.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

struct Initials::Reader {
    Reader() {
        UErrorCode status = U_ZERO_ERROR;
        transliterator.reset(
            icu::Transliterator::createInstance(u"Han-Latin; Latin-ASCII", UTRANS_FORWARD, status));
        if (U_FAILURE(status)) {
            throw std::runtime_error("ICU has no transliteration of Chinese characters");
        }
    }

    QString read(QStringView text) const {
        icu::UnicodeString unicode(text.utf16(), static_cast<int32_t>(text.size()));
        transliterator->transliterate(unicode);
        return QString::fromUtf16(unicode.getBuffer(), unicode.length());
    }

    std::unique_ptr<icu::Transliterator> transliterator;
};

namespace {

bool isChinese(QChar c) {
    return c.script() == QChar::Script_Han;
}

}  // namespace

Initials::Initials(QHash<QString, QString> exceptions)
    : exceptions_(std::move(exceptions)), reader_(std::make_unique<Reader>()) {
    for (auto word = exceptions_.keyBegin(); word != exceptions_.keyEnd(); ++word) {
        longest_ = std::max(longest_, word->size());
    }
}

Initials::~Initials() = default;

QString Initials::of(const QString& shortName) const {
    const QString name = shortName.normalized(QString::NormalizationForm_KC).toLower();
    QString initials;
    for (qsizetype at = 0; at < name.size();) {
        qsizetype length = std::min(longest_, name.size() - at);
        while (length > 0 && !exceptions_.contains(name.sliced(at, length))) {
            --length;
        }
        if (length > 0) {
            initials += exceptions_.value(name.sliced(at, length));
            at += length;
        } else {
            initials += initialOf(name[at]);
            ++at;
        }
    }
    return initials;
}

QString Initials::initialOf(QChar character) const {
    if (character.isSpace()) {
        return {};
    }
    const QString syllable = isChinese(character) ? reading(character) : QString();
    return syllable.isEmpty() ? QString(character) : syllable.first(1);
}

QString Initials::reading(QChar character) const {
    const QString read = reader_->read(QStringView(&character, 1)).trimmed().toLower();
    const bool letters =
        std::all_of(read.begin(), read.end(), [](QChar c) { return c >= u'a' && c <= u'z'; });
    return letters ? read : QString();
}

QHash<QString, QString> commonExceptions() {
    return {{u"行情"_s, u"hq"_s}, {u"银行"_s, u"yh"_s}, {u"行业"_s, u"hy"_s},
            {u"重组"_s, u"cz"_s}, {u"重启"_s, u"cq"_s}, {u"音乐"_s, u"yy"_s}};
}

QHash<QString, QString> readInitialsExceptions(const QString& path) {
    QHash<QString, QString> exceptions;
    for (const QStringList& row : readSeedList(path, 2)) {
        exceptions.insert(row[0], row[1]);
    }
    return exceptions;
}

}  // namespace guanchao
