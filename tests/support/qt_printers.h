// How Qt's texts are written in a test, and how they read in a failed expectation.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& list, std::ostream* out) {
    *out << '[' << list.join(QStringLiteral("\n ")).toStdString() << ']';
}
QT_END_NAMESPACE

namespace guanchao {
using namespace Qt::Literals::StringLiterals;

// A text of each.
template <typename List, typename Text>
QStringList textsOf(const List& list, const Text& text) {
    QStringList texts;
    for (const auto& it : list) {
        texts << text(it);
    }
    return texts;
}

}  // namespace guanchao
