// How Qt's texts are written and compared in a test, and how they read in a failed expectation.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <functional>
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

// A text for each, in their order; `text` may name a member.
template <typename List, typename Text>
QStringList textsOf(const List& list, const Text& text) {
    QStringList texts;
    for (const auto& it : list) {
        texts << std::invoke(text, it);
    }
    return texts;
}

// The whole text is told where the part isn't in it.
inline testing::AssertionResult holds(const QString& text, const QString& part) {
    return (text.contains(part) ? testing::AssertionSuccess() : testing::AssertionFailure())
           << text.toStdString();
}
inline testing::AssertionResult begins(const QString& text, const QString& part) {
    return (text.startsWith(part) ? testing::AssertionSuccess() : testing::AssertionFailure())
           << text.toStdString();
}

}  // namespace guanchao
