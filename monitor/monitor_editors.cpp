#include "monitor/monitor_editors.h"

#include <utility>

#include "base/values.h"
#include "monitor/poll_list.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString numberTyped(const QString& text) {
    return numberText(numericPrefix(text));
}

MonitorFields withoutBlanks(const MonitorFields& typed) {
    MonitorFields fields = typed;
    fields.name = trimBlanks(typed.name);
    fields.yinyue = trimBlanks(typed.yinyue);
    return fields;
}

QString flagText(bool on) {
    return on ? u"1"_s : u"0"_s;
}

// What both kinds of monitor hold, as an INSERT and as an UPDATE have it.
QString alarmValues(const MonitorFields& fields) {
    return quoted(fields.bijiaofu) + u',' + numberTyped(fields.baojinzhi) + u',' +
           flagText(fields.tanchuform) + u',' + quoted(fields.yinyue);
}

QString alarmAssignments(const MonitorFields& fields) {
    return u"bijiaofu="_s + quoted(fields.bijiaofu) + u",baojinzhi="_s +
           numberTyped(fields.baojinzhi) + u",tanchuform="_s + flagText(fields.tanchuform) +
           u",yinyue="_s + quoted(fields.yinyue);
}

QString tooManyStocks(const QString& frequency) {
    return u"此监控频率最多监控"_s + frequency + u"只股票，请先改大监控频率或删除不必要的监控。"_s;
}

// Whether the frequency allows so many stocks more, those on the list already counted again.
bool allows(Connection& connection, int more, Dialogs& dialogs) {
    const int needed = pollListCount(connection) + more;
    const Value frequency = neededFrequency(connection);
    if (frequency.toNumber() < needed) {
        dialogs.tell(tooManyStocks(frequency.toText()));
        return false;
    }
    return true;
}

}  // namespace

MonitorEditor::MonitorEditor(const QString& subject, const QString& query, const Stores& stores,
                             Globals& globals, Dialogs& dialogs)
    : stores_(stores),
      globals_(globals),
      dialogs_(dialogs),
      mode_(globals.bianjimoshi == 1 ? EditorMode::modify : EditorMode::add),
      subject_(subject),
      query_(query) {}

QString MonitorEditor::caption() const {
    return (mode_ == EditorMode::modify ? u"修改"_s : u"添加"_s) + subject_;
}

MonitorFields MonitorEditor::load() {
    MonitorFields fields = takeCurrent();
    fields.yinyue = globals_.yingyongmulu + u"cnwav.mp3"_s;
    if (mode_ == EditorMode::add) {
        return fields;
    }
    const Activity activity(u"读取"_s + subject_);
    Connection connection = stores_.main.open();
    const Recordset monitor(connection, query_ + quoted(fields.name));
    if (!monitor.atEnd()) {
        read(monitor, fields);
    }
    return fields;
}

// The name stands first.
void MonitorEditor::read(const Recordset& monitor, MonitorFields& fields) const {
    fields.name = monitor.value(0).toText();
    fields.bijiaofu = monitor.value(u"bijiaofu").toText();
    fields.baojinzhi = monitor.value(u"baojinzhi").toText();
    fields.yinyue = monitor.value(u"yinyue").toText();
    const Value& tanchuform = monitor.value(u"tanchuform");
    fields.tanchuform = !tanchuform.isNull() && tanchuform.toNumber() > 0;
}

bool MonitorEditor::confirm(const MonitorFields& typed) {
    const MonitorFields fields = withoutBlanks(typed);
    const Activity activity(caption());
    {
        Connection connection = stores_.main.open();
        const bool written =
            mode_ == EditorMode::modify ? modify(connection, fields) : add(connection, fields);
        if (!written) {
            return false;
        }
    }
    dialogs_.tell(caption() + u"完成。"_s);
    return true;
}

ThemeMonitorEditor::ThemeMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs)
    : MonitorEditor(u"主题监控"_s,
                    u"select  zhutiname,bijiaofu,baojinzhi,tanchuform,yinyue,guzhishu from"
                    u" zhutijiankong  where zhutiname="_s,
                    stores, globals, dialogs) {}

MonitorFields ThemeMonitorEditor::takeCurrent() {
    MonitorFields fields;
    fields.name = std::exchange(globals_.dangqianzhuti, QString());
    return fields;
}

bool ThemeMonitorEditor::add(Connection& connection, const MonitorFields& fields) {
    const Recordset monitored(
        connection,
        u"select zhutiname from zhutijiankong  where zhutiname="_s + quoted(fields.name));
    if (!monitored.atEnd()) {
        dialogs_.tell(u"此主题已在监控中。主题名:"_s + fields.name);
        return false;
    }
    const int members = memberCount(connection, fields.name);
    if (members < 1 || !allows(connection, members, dialogs_)) {
        return false;
    }
    Transaction transaction(connection);
    connection.execute(
        u"insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,tanchuform,yinyue,guzhishu)"
        u" values("_s +
        quoted(fields.name) + u',' + alarmValues(fields) + u',' + QString::number(members) +
        u")"_s);
    Recordset stocks(connection,
                     u"select  dm,jc from dzhzhuti  where zhutiname="_s + quoted(fields.name));
    for (; !stocks.atEnd(); stocks.moveNext()) {
        addToPollList(connection, stocks.value(u"dm").toText(), stocks.value(u"jc").toText());
    }
    transaction.commit();
    return true;
}

bool ThemeMonitorEditor::modify(Connection& connection, const MonitorFields& fields) {
    const int members = memberCount(connection, fields.name);
    if (members < 1) {
        return false;
    }
    connection.execute(u"update zhutijiankong set "_s + alarmAssignments(fields) + u",guzhishu="_s +
                       QString::number(members) + u"  where zhutiname="_s + quoted(fields.name));
    return true;
}

int ThemeMonitorEditor::memberCount(Connection& connection, const QString& zhutiname) {
    const Recordset count(
        connection,
        u"select  count(*) as  count from dzhzhuti  where zhutiname="_s + quoted(zhutiname));
    const int members = static_cast<int>(count.value(u"count").toNumber());
    if (members < 1) {
        dialogs_.tell(u"此主题不存在。主题名:"_s + zhutiname);
    }
    return members;
}

StockMonitorEditor::StockMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs)
    : MonitorEditor(u"个股监控"_s,
                    u"select  dm,jc,leixin,bijiaofu,baojinzhi,tanchuform,yinyue from gegujiankong"
                    u"  where dm="_s,
                    stores, globals, dialogs) {}

MonitorFields StockMonitorEditor::takeCurrent() {
    MonitorFields fields;
    fields.name = std::exchange(globals_.dangqiandm, QString());
    fields.jc = std::exchange(globals_.dangqianjc, QString());
    return fields;
}

void StockMonitorEditor::read(const Recordset& monitor, MonitorFields& fields) const {
    MonitorEditor::read(monitor, fields);
    fields.jc = monitor.value(u"jc").toText();
    fields.leixin = monitor.value(u"leixin").toText();
}

std::optional<QString> StockMonitorEditor::shortName(const QString& dm) const {
    const Activity activity(u"读取股票简称"_s);
    Connection connection = stores_.main.open();
    return guanchao::shortName(connection, dm);
}

bool StockMonitorEditor::confirm(const MonitorFields& typed) {
    MonitorFields fields = typed;
    fields.name = fields.name.toUpper();
    return MonitorEditor::confirm(fields);
}

bool StockMonitorEditor::add(Connection& connection, const MonitorFields& fields) {
    if (!allows(connection, 1, dialogs_)) {
        return false;
    }
    const Recordset monitored(connection,
                              u"select  dm from gegujiankong  where dm="_s + quoted(fields.name));
    if (!monitored.atEnd()) {
        dialogs_.tell(u"此代码已在监控中。代码:"_s + fields.name);
        return false;
    }
    const std::optional<QString> jc = listedName(connection, fields.name);
    if (!jc) {
        return false;
    }
    Transaction transaction(connection);
    connection.execute(
        u"insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi,tanchuform,yinyue) values("_s +
        quoted(fields.name) + u',' + quoted(*jc) + u',' + quoted(fields.leixin) + u',' +
        alarmValues(fields) + u")"_s);
    addToPollList(connection, fields.name, *jc);
    transaction.commit();
    return true;
}

bool StockMonitorEditor::modify(Connection& connection, const MonitorFields& fields) {
    if (!listedName(connection, fields.name)) {
        return false;
    }
    connection.execute(u"update gegujiankong set leixin="_s + quoted(fields.leixin) + u',' +
                       alarmAssignments(fields) + u"  where dm="_s + quoted(fields.name));
    return true;
}

std::optional<QString> StockMonitorEditor::listedName(Connection& connection, const QString& dm) {
    std::optional<QString> jc = guanchao::shortName(connection, dm);
    if (!jc) {
        dialogs_.tell(u"此代码不存在。代码:"_s + dm);
    }
    return jc;
}

}  // namespace guanchao
