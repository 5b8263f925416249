#include "utilities/proxies.h"

#include "formats/gbk.h"
#include "tests/support/store_test.h"

namespace guanchao {

class ProxiesTest : public StoreTest {
protected:
    // The first is the current one; the second came from the page.
    ProxiesTest() {
        runArticle(
            u"insert into proxy(id,ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
            u"beizhu,defaultproxy,down) values(3,'own',80,1,'u','p','n',1,0),"
            u"(7,'old',81,0,'','','',0,1)"_s);
        before_ = rows(u"*"_s);
    }

    QStringList rows(const QString& columns) {
        return articleRows(u"select "_s + columns + u" from proxy"_s);
    }
    // From now on each new row and each change of a server fails.
    void refuseWrites() {
        for (const QString& write : {u"insert"_s, u"update of ProxyServer"_s}) {
            runArticle(
                u"create trigger \"%1\" before %1 on proxy begin select raise(abort,'no'); end"_s
                    .arg(write));
        }
    }
    QStringList marks() { return rows(u"ProxyServer,defaultproxy"_s); }
    bool download(const std::optional<QString>& page) {
        http_.answer = [page](const QString&) {
            return page ? std::optional(gbkFromText(*page)) : std::nullopt;
        };
        return outcomeOf(proxies_.download({}));
    }

    static Proxy proxy(const QString& id, const QString& server, const QString& port,
                       bool isCurrent) {
        return {id, server, port, false, u" a "_s, u" b "_s, u" c "_s, isCurrent};
    }

    Service vendor_{.host = u"http://vendor"_s, .referer = {}};
    Proxies proxies_{store_.stores, dialogs_, http_, vendor_};
    QStringList before_;
};

TEST_F(ProxiesTest, RefusalsChangeNothing) {
    const QString noServer = u"观潮台|代理服务器地址为空！"_s;
    const QString noPort = u"观潮台|代理服务器端口不正确！"_s;
    const std::tuple<QString, QString, QString> cases[] = {
        {{}, u"0"_s, noServer}, {u"s"_s, u"a"_s, noPort}, {u"s"_s, u"0.5"_s, noPort}};
    for (const auto& [server, port, words] : cases) {
        const Proxy typed = proxy(u"3"_s, server, port, true);
        EXPECT_FALSE(proxies_.add(typed));
        EXPECT_FALSE(proxies_.modify(typed));
        EXPECT_EQ(told(), QStringList({words, words})) << port.toStdString();
    }
    EXPECT_FALSE(proxies_.modify(proxy({}, u"s"_s, u"1"_s, true)));
    EXPECT_FALSE(proxies_.remove({}));
    EXPECT_FALSE(proxies_.remove(u"0    x"_s));
    EXPECT_EQ(told(), QStringList(3, u"观潮台|没有选择代理服务器！"_s));
    refuseWrites();
    EXPECT_THROW(proxies_.add(proxy({}, u"s"_s, u"1"_s, true)), StoreError);
    EXPECT_THROW(proxies_.modify(proxy(u"3"_s, u"s"_s, u"1"_s, true)), StoreError);
    EXPECT_EQ(rows(u"*"_s), before_) << "the mark that the new one takes comes back";
}

TEST_F(ProxiesTest, AServerIsAddedModifiedAndDeleted) {
    EXPECT_TRUE(proxies_.add(proxy({}, u" new "_s, u"8080端口"_s, false)));
    EXPECT_EQ(rows(u"*"_s).last(), u"8|new|8080|0|a|b| c |0|0"_s);
    EXPECT_TRUE(proxies_.add(proxy({}, u"two"_s, u"1"_s, true)));
    EXPECT_EQ(marks(), QStringList({u"own|0"_s, u"old|0"_s, u"new|0"_s, u"two|1"_s}));
    Proxy own = *proxies_.proxyOf(u"3    own"_s);
    own.server = u"mine"_s;
    EXPECT_TRUE(proxies_.modify(own));
    EXPECT_EQ(rows(u"*"_s).first(), u"3|mine|80|1|u|p|n|0|0"_s);
    EXPECT_EQ(marks().last(), u"two|1"_s) << "without the mark the old one stays";
    EXPECT_TRUE(proxies_.remove(u"7    old"_s));
    EXPECT_EQ(marks(), QStringList({u"mine|0"_s, u"new|0"_s, u"two|1"_s}));
}

TEST_F(ProxiesTest, ADownloadThatBringsNoListChangesNothing) {
    const QString failed = u"观潮台|找不到服务器,请稍后再试!"_s;
    const QString done = u"观潮台|下载代理服务器列表完成！"_s;
    const QString list = u"<table><tr><td>a<tr><td>b</table>"_s;
    const std::pair<std::optional<QString>, QString> cases[] = {
        {std::nullopt, failed},
        {u"<title>找不到服务器</title>"_s + list, failed},
        {list + u"<h1>无法<b>找到该页</b></h1>"_s, failed},
        {QString(), done},
        {u"<p>网站维护中</p>"_s, done},
        {u"<table><tr><td>a</table>"_s + list, done},
        {u"<table></table>"_s + list, done},
    };
    for (const auto& [page, words] : cases) {
        EXPECT_EQ(download(page), words == done);
        EXPECT_EQ(told(), QStringList{words}) << page.value_or(u"no answer"_s).toStdString();
    }
    EXPECT_EQ(http_.addresses.first(), u"http://vendor/chaoxin/dlfwq.htm"_s);
    refuseWrites();
    EXPECT_THROW(download(list), StoreError);
    EXPECT_EQ(told(), QStringList());
    EXPECT_EQ(rows(u"*"_s), before_) << "the deleted rows come back";
}

TEST_F(ProxiesTest, ADownloadReplacesTheDownloadedRowsOnly) {
    EXPECT_TRUE(
        download(u"<table><tr><th>地址<th>端口<th>备注<th>用户<th>密码"
                 u"<tr><td> a <td>8080x<td>北京&nbsp;<td>&nbsp;<td>unused"
                 u"<tr><td>b<td>3128<td>上海<td> u <td> p <td>more<tr>"
                 u"<tr><td>c',1,0,'','','',9,1) --</table>"_s));
    EXPECT_EQ(rows(u"ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,beizhu,down"_s),
              QStringList({u"own|80|1|u|p|n|0"_s, u"地址|0|1|用户|密码|备注|1"_s,
                           u"a|8080|0|||北京|1"_s, u"b|3128|1|u|p|上海|1"_s, u"|0|0||||1"_s,
                           u"c',1,0,'','','',9,1) --|0|0||||1"_s}));
}

}  // namespace guanchao
