#include "utilities/proxies.h"

#include "base/activity.h"
#include "base/later.h"
#include "base/values.h"
#include "store/patience.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The fewest rows of a table that has servers in it.
constexpr qsizetype fewestRows = 2;

const QString gap = u"    "_s;

// The text before the first two blanks.
QString idOf(const QString& line) {
    return line.section(u"  "_s, 0, 0);
}

bool isOn(const Value& value) {
    return !value.isNull() && value.toNumber() > 0;
}

double portOf(const QString& text) {
    return roundToWhole(numericPrefix(text));
}

QString flag(bool on) {
    return on ? u"1"_s : u"0"_s;
}

void takeMarkFromAll(Connection& store) {
    store.execute(u"update proxy set defaultproxy=0"_s);
}

QString currentServer(Connection& store) {
    const Recordset current(store,
                            u"select id,ProxyServer,ProxyPort from proxy where defaultproxy>0"_s);
    return current.atEnd() ? QString() : current.value(u"ProxyServer").toText();
}

void insertDownloaded(Connection& store, const QStringList& cells) {
    const QString user = cells.value(3);
    const QString access = user.isEmpty()
                               ? u",0,'','',"_s
                               : u",1,"_s + quoted(user) + u","_s + quoted(cells.value(4)) + u","_s;
    store.execute(
        u"Insert Into proxy(ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
        u"beizhu,defaultproxy,down) Values("_s +
        quoted(cells.value(0)) + u","_s + numberText(portOf(cells.value(1))) + access +
        quoted(cells.value(2)) + u",0,1)"_s);
}

// The server that was the current one is so again, in every row that it has; where it has gone, the
// newest row is.
void markCurrent(Connection& store, const QString& server) {
    const Recordset kept(
        store, u"select id,ProxyServer,ProxyPort from proxy where ProxyServer="_s + quoted(server));
    if (!kept.atEnd()) {
        store.execute(u"update proxy set defaultproxy=1 where ProxyServer="_s + quoted(server));
        store.execute(u"update proxy set defaultproxy=0 where ProxyServer<>"_s + quoted(server));
        return;
    }
    const QString maxid =
        Recordset(store, u"select max(id) as maxid from proxy"_s).value(u"maxid").toText();
    store.execute(u"update proxy set defaultproxy=1 where id="_s + maxid);
    store.execute(u"update proxy set defaultproxy=0 where id<>"_s + maxid);
}

}  // namespace

ProxyList Proxies::load() const {
    const Activity activity(u"读取代理服务器列表"_s);
    Connection store = stores_.article.open();
    ProxyList list;
    for (Recordset rows(store, u"select id,ProxyServer from proxy"_s); !rows.atEnd();
         rows.moveNext()) {
        list.lines << rows.value(u"id").toText() + gap + rows.value(u"ProxyServer").toText();
    }
    const Recordset switches(store, u"select id,UseProxy,pasv from tempcanshu"_s);
    if (!switches.atEnd()) {
        list.useProxy = isOn(switches.value(u"UseProxy"));
        list.pasv = isOn(switches.value(u"pasv"));
    }
    return list;
}

std::optional<Proxy> Proxies::proxyOf(const QString& line) const {
    const Activity activity(u"读取代理服务器"_s);
    Connection store = stores_.article.open();
    const Recordset row(store,
                        u"select id,ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
                        u"beizhu,defaultproxy from proxy where id="_s +
                            idOf(line));
    if (row.atEnd()) {
        return std::nullopt;
    }
    return Proxy{.id = row.value(u"id").toText(),
                 .server = row.value(u"ProxyServer").toText(),
                 .port = row.value(u"ProxyPort").toText(),
                 .needsUser = isOn(row.value(u"UseProxyUser")),
                 .user = row.value(u"proxyuser").toText(),
                 .password = row.value(u"proxypassword").toText(),
                 .note = row.value(u"beizhu").toText(),
                 .isCurrent = isOn(row.value(u"defaultproxy"))};
}

void Proxies::setUseProxy(bool on) {
    setSwitch(u"UseProxy"_s, on);
}

void Proxies::setPasv(bool on) {
    setSwitch(u"pasv"_s, on);
}

void Proxies::setSwitch(const QString& column, bool on) {
    const Activity activity(u"保存代理服务器设置"_s);
    stores_.article.open().execute(u"update tempcanshu set "_s + column + u"="_s + flag(on));
}

// As it is stored, or nothing if a refusal was told.
std::optional<Proxy> Proxies::checked(const Proxy& typed) {
    Proxy proxy = typed;
    proxy.server = trimBlanks(typed.server);
    proxy.user = trimBlanks(typed.user);
    proxy.password = trimBlanks(typed.password);
    proxy.port = numberText(portOf(typed.port));
    if (proxy.server.isEmpty()) {
        dialogs_.tell(u"代理服务器地址为空！"_s);
        return std::nullopt;
    }
    if (portOf(typed.port) < 1) {
        dialogs_.tell(u"代理服务器端口不正确！"_s);
        return std::nullopt;
    }
    return proxy;
}

bool Proxies::add(const Proxy& typed) {
    const Activity activity(u"添加代理服务器"_s);
    const std::optional<Proxy> proxy = checked(typed);
    if (!proxy) {
        return false;
    }
    {
        Connection store = stores_.article.open();
        Transaction transaction(store);
        if (proxy->isCurrent) {
            takeMarkFromAll(store);
        }
        store.execute(
            u"Insert Into proxy(ProxyServer,ProxyPort,UseProxyUser,proxyuser,proxypassword,"
            u"beizhu,defaultproxy) Values("_s +
            quoted(proxy->server) + u","_s + proxy->port + u","_s + flag(proxy->needsUser) +
            u","_s + quoted(proxy->user) + u","_s + quoted(proxy->password) + u","_s +
            quoted(proxy->note) + u","_s + flag(proxy->isCurrent) + u")"_s);
        transaction.commit();
    }
    dialogs_.tell(u"添加代理服务器完成！"_s);
    return true;
}

bool Proxies::modify(const Proxy& typed) {
    const Activity activity(u"修改代理服务器"_s);
    const std::optional<Proxy> proxy = checked(typed);
    if (!proxy) {
        return false;
    }
    if (proxy->id.isEmpty()) {
        dialogs_.tell(u"没有选择代理服务器！"_s);
        return false;
    }
    {
        Connection store = stores_.article.open();
        Transaction transaction(store);
        if (proxy->isCurrent) {
            takeMarkFromAll(store);
        }
        store.execute(u"update proxy set ProxyServer="_s + quoted(proxy->server) +
                      u",ProxyPort="_s + proxy->port + u",UseProxyUser="_s +
                      flag(proxy->needsUser) + u",proxyuser="_s + quoted(proxy->user) +
                      u",proxypassword="_s + quoted(proxy->password) + u",beizhu="_s +
                      quoted(proxy->note) + u",defaultproxy="_s + flag(proxy->isCurrent) +
                      u" where id="_s + proxy->id);
        transaction.commit();
    }
    dialogs_.tell(u"修改代理服务器完成！"_s);
    return true;
}

bool Proxies::remove(const QString& line) {
    const Activity activity(u"删除代理服务器"_s);
    const QString id = idOf(line);
    if (numericPrefix(id) < 1) {
        dialogs_.tell(u"没有选择代理服务器！"_s);
        return false;
    }
    stores_.article.open().execute(u"delete from proxy  where id="_s + id);
    dialogs_.tell(u"已删除一个代理服务器！"_s);
    return true;
}

QCoro::Task<bool> Proxies::download(std::stop_token stop) {
    const QString file = u"/chaoxin/dlfwq.htm"_s;
    const HttpReply reply = co_await http_.get(vendor_, file, stop);
    const HtmlPage page = reply.answered() ? readHtmlPage(reply.body) : HtmlPage();
    const QString words = page.title + page.text;
    if (!reply.answered() || words.contains(u"找不到服务器"_s) ||
        words.contains(u"无法找到该页"_s)) {
        http_.complain(vendor_, u"应答里没有代理服务器"_s);
        dialogs_.tell(u"找不到服务器,请稍后再试!"_s);
        co_return false;
    }
    const auto step = [=, this] { takeOver(page.tables); };
    co_await patiently(step, stop);
    dialogs_.tell(u"下载代理服务器列表完成！"_s);
    endIfStopped(stop);
    co_return true;
}

// Each table replaces the servers of the one before it. One that is too short for a list ends it
// all at once, and the marks stay as they are.
void Proxies::takeOver(const QList<HtmlTable>& tables) {
    const Activity activity(u"下载代理服务器列表"_s);
    if (tables.isEmpty()) {
        return;
    }
    Connection store = stores_.article.open();
    Transaction transaction(store);
    QString server;
    for (const HtmlTable& table : tables) {
        if (table.size() < fewestRows) {
            transaction.commit();
            return;
        }
        server = currentServer(store);
        store.execute(u"delete from proxy  where down=1"_s);
        for (const QStringList& cells : table) {
            insertDownloaded(store, cells);
        }
    }
    markCurrent(store, server);
    transaction.commit();
}

}  // namespace guanchao
