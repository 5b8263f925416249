#include "services/services.h"

#include <QTemporaryDir>

#include "services/standard_file.h"
#include "tests/support/files.h"

namespace guanchao {

class ServicesTest : public ::testing::Test {
protected:
    Services read(const QByteArray& text) {
        writeFile(path_, text);
        return readServices(path_);
    }
    // Each as "kind host".
    static QString words(const QList<Service>& services) {
        const auto text = [](const Service& it) -> QString { return it.kind + u' ' + it.host; };
        return textsOf(services, text).join(u", "_s);
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"services.ini"_s);
};

TEST_F(ServicesTest, AFileOfOneKindEachMeansWhatItMeant) {
    const Services services =
        read("[quote]\nhost=http://q\n[newspage]\nhost=http://n\n[history]\nhost=http://h\n");
    EXPECT_EQ(words(services.quote), u"sina http://q"_s);
    EXPECT_EQ(services.quote.first().referer, u"https://finance.sina.com.cn/"_s);
    EXPECT_EQ(words(services.history), u"csv http://h"_s);
    EXPECT_EQ(words(services.factors), QString()) << "they belong to prices of another kind";
    EXPECT_EQ(words(services.fundamentals), u"page http://n"_s);
    EXPECT_EQ(words(read("[history]\nhost=\n").history), u"csv "_s) << "taken out";
    EXPECT_EQ(words(read("[search]\ntimeout=15\n").search), u"page "_s);
    EXPECT_EQ(words(read("[search]\nhost=http://s\n").search), u"page http://s"_s);
}

TEST_F(ServicesTest, KindsComeInTheOrderOfTheirNumbers) {
    const QString none;
    const QString theirHosts =
        u"sina https://money.finance.sina.com.cn, tencent https://web.ifzq.gtimg.cn"_s;
    const QByteArray three =
        "[history.3]\nkind=csv\nhost=http://c\n[History]\nkind=SINA\n[history.2]\nkind=tencent\n";
    const QByteArray unknown = "[history]\nkind=yahoo\n[history.2]\nkind=sina\nhost=http://s\n";
    const std::tuple<const char*, QByteArray, QString, QString> cases[] = {
        {"by number, wherever they stand", three, theirHosts + u", csv http://c"_s, none},
        {"a gap, and nothing else of the standard", "[history.7]\nkind=eastmoney\n",
         u"eastmoney https://push2his.eastmoney.com"_s, none},
        {"an unknown kind", unknown, u"sina http://s"_s, u"[history] 写着 kind=yahoo"_s},
    };
    for (const auto& [name, text, history, complaint] : cases) {
        const Services services = read(text);
        EXPECT_EQ(words(services.history), history) << name;
        EXPECT_EQ(services.complaints.size(), complaint.isEmpty() ? 0 : 1) << name;
        EXPECT_TRUE(services.complaints.join(u' ').contains(complaint)) << name;
    }
}

TEST_F(ServicesTest, HowAServiceIsAsked) {
    const Services services = read(
        "[quote]\nhost=http://127.0.0.1:8610\ntimeout=15\nahead=9\n[vendor]\nhost=\ntimeout=long\n"
        "[history]\nkind=sina\ntimeout=0\n[history.2]\nkind=sina\nhost=http://localhost:1\n"
        "[history.3]\nkind=sina\npause=0\n[history.4]\nkind=sina\npause=1000\n"
        "[chart]\ntimeout=0.5\n");
    EXPECT_EQ(services.quote.first().timeoutSeconds, 15);
    EXPECT_EQ(services.quote.first().ahead, 6) << "no more";
    EXPECT_EQ(services.newspage.timeoutSeconds, 4);
    EXPECT_EQ(services.vendor.timeoutSeconds, 15) << "no number";
    EXPECT_EQ(services.chart.timeoutSeconds, 1) << "0 would be without end";
    EXPECT_EQ(services.history.first().timeoutSeconds, 0);
    const auto pause = [](const Service& it) { return QString::number(it.pauseSeconds); };
    EXPECT_EQ(textsOf(services.history, pause).join(u' '), u"0.7 0 0 60"_s);
}

TEST_F(ServicesTest, TheFileThatIsShippedSaysWhatHoldsWithoutOne) {
    const Services standard = readServices(path_);
    const QString path = QStringLiteral(GUANCHAO_SOURCE_DIR "/data/services.ini");
    const Services shipped = readServices(path);
    for (const auto list : {&Services::quote, &Services::history, &Services::factors,
                            &Services::fundamentals, &Services::boards}) {
        EXPECT_EQ(words(shipped.*list), words(standard.*list));
    }
    for (const auto service :
         {&Services::chart, &Services::stockpage, &Services::sitepage, &Services::newspage}) {
        EXPECT_EQ((shipped.*service).host, (standard.*service).host);
    }
    EXPECT_EQ(words(standard.search), u"page "_s) << "where the store's own pattern leads";
    EXPECT_EQ(words(shipped.search), u"eastmoney https://search-api-web.eastmoney.com"_s);
    EXPECT_TRUE(shipped.complaints.isEmpty());
    EXPECT_FALSE(isFormerStandard(contentOf(path)));
}

}  // namespace guanchao
