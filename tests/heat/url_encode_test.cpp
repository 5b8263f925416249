#include "heat/url_encode.h"

#include <gtest/gtest.h>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(UrlEncodeTest, WordsComeInTheBytesOfGbkAndNothingElseChanges) {
    EXPECT_EQ(URLEncode(u"浦发 a&b%+"_s), u"%C6%D6%B7%A2%20a&b%+"_s);
    EXPECT_EQ(URLEncode(u"丂齄"_s), u"%81%40%F7%FE"_s) << "both ends of the page";
    EXPECT_EQ(URLEncode(u"㐀é"_s), u"㐀%A8%A6"_s) << "what the page lacks stays";
}

}  // namespace guanchao
