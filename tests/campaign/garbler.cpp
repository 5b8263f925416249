#include "tests/campaign/garbler.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <random>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int roundsPerHuge = 200;
constexpr int roundsPerNoise = 8;
constexpr qsizetype smallBytes = 4096;
constexpr double mostBytes = 1 << 20;

// What breaks readers, whole and in pieces.
const QList<QByteArray> tokens =
    "nan inf -Infinity 1e308 1e309 -1e-320 0x10 +. - 1. .5e 1e 65536 2147483648 "
    "99999999999999999999 -9223372036854775808 00000000000000000001 １．５ 2026-02-30 0000-00-00 "
    "9999-12-31 24:60:61 ' '' \" \\ ; , ,,,, = | \t \n \r\n \r %1 % # [ ] { } ( )*+ < > </ "
    "';drop/**/table/**/dmb;-- &nbsp &#0; &#xD800; &#x110000; &lt; <table> <tr><td> </table> "
    "<td/rowspan=99999999> <thead> <script> <!-- <![CDATA[ <title> <div> <b> <meta/charset=gbk> "
    "<meta/charset=utf-16> var\xC2\xA0hq_str_sh600000=\" \"; hq_str_ SH600000 sz000001 tihuandm "
    "\0 \0\0\0\0 \xEF\xBB\xBF \xFF\xFE \xFE\xFF \xED\xA0\x80 \xED\xBF\xBF \0\xD8 \0\xDC \xD8\0 "
    "\x81 \xFF \x80 \x84\x31\xA4\x37 \x83\x36\xC7\x38 \x90\x30\x81\x30 \xE3\x32\x9A\x35 \xC0\x80 "
    "\xF4\x90\x80\x80 \xF0\x9F\x98\x80 \xE2\x80\xA8 \xE2\x80\xAE \xE3\x80\x80 \xCC\x81 "
    "\xD6\xF7\xCC\xE2 主题 \x1B[31m \x7F "_ba.split(' ');

class Dice {
public:
    Dice(const QList<QByteArray>& wellFormed, quint32 name, quint32 seed, quint32 round)
        : wellFormed_(wellFormed) {
        std::seed_seq all{name, seed, round};
        numbers_.seed(all);
    }

    qsizetype below(qsizetype end) {
        return static_cast<qsizetype>(numbers_() %
                                      static_cast<quint32>(std::max<qsizetype>(end, 1)));
    }
    bool oneIn(int times) { return below(times) == 0; }
    char byte() { return static_cast<char>(below(256)); }
    double share() { return static_cast<double>(numbers_()) / 4294967296.0; }
    const QByteArray& oneOf(const QList<QByteArray>& list) { return list[below(list.size())]; }
    const QByteArray& wellFormed() { return oneOf(wellFormed_); }
    QByteArray pieceOf(const QByteArray& bytes) {
        const qsizetype from = below(bytes.size());
        return bytes.mid(from, 1 + below(oneIn(4) ? bytes.size() : 40));
    }

private:
    const QList<QByteArray>& wellFormed_;
    std::mt19937 numbers_;
};

void flipBytes(QByteArray& bytes, Dice& dice) {
    for (qsizetype times = 1 + dice.below(4); times > 0 && !bytes.isEmpty(); --times) {
        bytes[dice.below(bytes.size())] = dice.byte();
    }
}

void insertToken(QByteArray& bytes, Dice& dice) {
    bytes.insert(dice.below(bytes.size() + 1), dice.oneOf(tokens));
}

void replacePiece(QByteArray& bytes, Dice& dice) {
    bytes.replace(dice.below(bytes.size()), dice.below(12), dice.oneOf(tokens));
}

// The number that begins somewhere behind a chosen place becomes a token.
void replaceNumber(QByteArray& bytes, Dice& dice) {
    const auto isPart = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
    const auto begin =
        std::find_if(bytes.cbegin() + dice.below(bytes.size()), bytes.cend(), isPart);
    const auto end = std::find_if_not(begin, bytes.cend(), isPart);
    bytes.replace(begin - bytes.cbegin(), end - begin, dice.oneOf(tokens));
}

void emptyField(QByteArray& bytes, Dice& dice) {
    const char separator = dice.oneOf({",", "\n", "\"", "\t", "=", ">"})[0];
    const qsizetype begin = bytes.indexOf(separator, dice.below(bytes.size())) + 1;
    const qsizetype end = bytes.indexOf(separator, begin);
    bytes.remove(begin, (end < 0 ? bytes.size() : end) - begin);
}

void repeatPiece(QByteArray& bytes, Dice& dice) {
    const QByteArray piece = dice.pieceOf(bytes);
    const qsizetype room = smallBytes / std::max<qsizetype>(piece.size(), 1);
    const qsizetype times = dice.oneIn(3) ? std::min<qsizetype>(room, 1000) : 1;
    bytes.insert(dice.below(bytes.size() + 1), piece.repeated(times));
}

void cutOff(QByteArray& bytes, Dice& dice) {
    bytes.truncate(dice.below(bytes.size() + 1));
}

void insertPiece(QByteArray& bytes, Dice& dice) {
    bytes.insert(dice.below(bytes.size() + 1), dice.pieceOf(dice.wellFormed()));
}

void removePiece(QByteArray& bytes, Dice& dice) {
    bytes.remove(dice.below(bytes.size()), dice.below(40));
}

constexpr void (*changes[])(QByteArray&, Dice&) = {
    flipBytes,   insertToken, replacePiece, replaceNumber, emptyField,
    repeatPiece, cutOff,      insertPiece,  removePiece,
};

QByteArray noise(Dice& dice) {
    QByteArray bytes;
    for (qsizetype pieces = dice.below(40); pieces > 0; --pieces) {
        bytes += dice.oneIn(3) ? dice.pieceOf(dice.wellFormed()) : dice.oneOf(tokens);
    }
    return bytes;
}

QByteArray pieceOrTokens(const QByteArray& bytes, Dice& dice) {
    const QByteArray piece = dice.oneIn(3) ? dice.oneOf(tokens) : dice.pieceOf(bytes);
    return dice.oneIn(2) ? piece + dice.oneOf(tokens) : piece;
}

// One thing over and over, until all is as large as that.
void blowUp(QByteArray& bytes, Dice& dice) {
    const auto size =
        static_cast<qsizetype>(smallBytes * std::pow(mostBytes / smallBytes, dice.share()));
    const QByteArray piece = pieceOrTokens(bytes, dice);
    if (!piece.isEmpty() && size > bytes.size()) {
        const qsizetype times = (size - bytes.size()) / piece.size();
        bytes.insert(dice.below(bytes.size() + 1), piece.repeated(times));
    }
}

}  // namespace

Garbler::Garbler(const QList<QByteArray>& wellFormed, const QByteArray& name, quint32 seed)
    : wellFormed_(wellFormed), name_(qChecksum(name)), seed_(seed) {}

QByteArray Garbler::input(quint32 round) const {
    Dice dice(wellFormed_, name_, seed_, round);
    QByteArray bytes = dice.wellFormed();
    const qsizetype limit = std::max(smallBytes, 2 * bytes.size());
    if (dice.oneIn(roundsPerNoise)) {
        bytes = noise(dice);
    }
    do {
        changes[dice.below(std::ssize(changes))](bytes, dice);
    } while (dice.below(3) > 0);
    bytes.truncate(limit);
    if (dice.oneIn(roundsPerHuge)) {
        blowUp(bytes, dice);
    }
    return bytes;
}

}  // namespace guanchao
