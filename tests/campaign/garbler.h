// Inputs as a bad day sends them, made from well-formed ones: cut, doubled, spliced, with broken
// characters, huge numbers and markup in them, now and then blown up; and noise of such pieces
// alone.
#pragma once

#include <QByteArray>
#include <QList>

namespace guanchao {

class Garbler {
public:
    Garbler(const QList<QByteArray>& wellFormed, const QByteArray& name, quint32 seed);

    // The same for the same name, seed and round. Most inputs are small, one in two hundred has up
    // to a million bytes.
    QByteArray input(quint32 round) const;

private:
    QList<QByteArray> wellFormed_;
    quint32 name_;
    quint32 seed_;
};

}  // namespace guanchao
