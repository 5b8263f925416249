#include "formats/text_file.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>
#include <optional>

#include "base/activity.h"
#include "base/files.h"
#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray utf8Mark = "\xEF\xBB\xBF";

// Also of a text that breaks off in the middle of a character, which then shows as broken.
QString decoded(QStringDecoder::Encoding encoding, const QByteArray& bytes) {
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    return decoder(bytes);
}

// UTF-16 that is broken brings halves of characters, which the decoder passes on.
QString decodedUtf16(QStringDecoder::Encoding encoding, const QByteArray& bytes) {
    QString text = decoded(encoding, bytes);
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool hasOther = at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (text[at].isHighSurrogate() && hasOther) {
            ++at;
        } else if (text[at].isSurrogate()) {
            text[at] = QChar::ReplacementCharacter;
        }
    }
    return text;
}

bool hasAll(const QByteArray& bytes, bool (*test)(unsigned char)) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [test](char byte) { return test(static_cast<unsigned char>(byte)); });
}

// The text without the beginning of a character of UTF-8 at its end.
QByteArray withoutCutEnd(const QByteArray& bytes) {
    constexpr qsizetype longest = 4;
    for (qsizetype back = 1; back < longest && back <= bytes.size(); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        const qsizetype whole = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        if (byte < 0x80 || whole > 1) {
            return whole > back ? bytes.chopped(back) : bytes;
        }
    }
    return bytes;
}

bool isUtf8(const QByteArray& bytes) {
    const QByteArray whole = withoutCutEnd(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(whole);
    return !decoder.hasError() && !hasAll(whole, [](unsigned char byte) { return byte < 0xE0; });
}

constexpr qint64 blockBytes = 1 << 20;

QString textFrom(const QByteArray& bytes, const QString& encoding) {
    return encoding == u"GBK"_s ? textFromGbk(bytes) : decoded(QStringDecoder::Utf8, bytes);
}

[[noreturn]] void failToRead(const QFile& file) {
    throw OperationError(u"不能读取文件 "_s + file.fileName() + u"（"_s + reasonOf(file) +
                         u"）。"_s);
}

std::optional<ReadText> readMarked(const QByteArray& bytes) {
    if (bytes.startsWith(utf8Mark)) {
        return ReadText{decoded(QStringDecoder::Utf8, bytes.sliced(utf8Mark.size())), u"UTF-8"_s};
    }
    if (bytes.startsWith("\xFF\xFE")) {
        return ReadText{decodedUtf16(QStringDecoder::Utf16LE, bytes.sliced(2)), u"UTF-16"_s};
    }
    if (bytes.startsWith("\xFE\xFF")) {
        return ReadText{decodedUtf16(QStringDecoder::Utf16BE, bytes.sliced(2)), u"UTF-16"_s};
    }
    return std::nullopt;
}

}  // namespace

ReadText readText(const QByteArray& bytes) {
    if (const std::optional<ReadText> marked = readMarked(bytes)) {
        return *marked;
    }
    if (hasAll(bytes, [](unsigned char byte) { return byte < 0x80; })) {
        return {QString::fromLatin1(bytes), {}};
    }
    if (isUtf8(bytes)) {
        return {decoded(QStringDecoder::Utf8, bytes), u"UTF-8"_s};
    }
    // Half a character only shows when something comes behind it.
    return {textFromGbk(bytes + '\n').chopped(1), u"GBK"_s};
}

QByteArray bytesOf(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return readText(bytes).text == text ? bytes : utf8Mark + bytes;
}

QStringList linesOf(const QString& text) {
    QString ended = text;
    ended.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = ended.split(u'\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

static QStringList textLinesOf(const QFile& file, const QString& text) {
    if (text.contains(QChar::Null)) {
        throw OperationError(u"文件 "_s + file.fileName() + u" 不是文本文件，请换一个。"_s);
    }
    return linesOf(text);
}

TextFile readTextFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        failToRead(file);
    }
    const ReadText read = readText(file.readAll());
    return {textLinesOf(file, read.text), read.encoding};
}

TextBlocks::TextBlocks(const QString& path) : file_(path) {
    if (!file_.open(QIODevice::ReadOnly)) {
        failToRead(file_);
    }
}

QStringList TextBlocks::next() {
    const QByteArray bytes = wholeLines();
    if (bytes.isEmpty()) {
        return {};
    }
    if (!encoding_.isEmpty()) {
        return textLinesOf(file_, textFrom(bytes, encoding_));
    }
    const ReadText read = readText(bytes);
    encoding_ = read.encoding;
    return textLinesOf(file_, read.text);
}

// What has no line feed comes as a whole, and so does UTF-16, in which a byte of this value may be
// half a character.
QByteArray TextBlocks::wholeLines() {
    QByteArray bytes = rest_;
    const auto isUtf16 = [&] {
        return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    };
    do {
        bytes += file_.read(blockBytes);
        if (file_.error() != QFile::NoError) {
            failToRead(file_);
        }
    } while (!file_.atEnd() && (isUtf16() || !bytes.contains('\n')));
    const qsizetype end = file_.atEnd() ? bytes.size() : bytes.lastIndexOf('\n') + 1;
    rest_ = bytes.sliced(end);
    return bytes.first(end);
}

bool isBroken(const QString& line) {
    return line.contains(QChar::ReplacementCharacter);
}

}  // namespace guanchao
