#include "utilities/version_check.h"

#include <QFile>
#include <QTemporaryDir>

#include "formats/gbk.h"
#include "tests/support/fakes.h"

namespace guanchao {

struct VersionChecked {
    explicit VersionChecked(const std::optional<QByteArray>& reply, const QString& below = u"/"_s) {
        Globals globals;
        globals.yingyongmulu = folder.path() + below;
        http.answer = [&](const QString&) { return reply; };
        VersionCheck check(globals, vendor, http, dialogs, shell);
        QCoro::waitFor(check.run(u"观潮台(V3.7)"_s, {}));
    }

    QTemporaryDir folder;
    Service vendor;
    FakeHttp http;
    FakeDialogs dialogs;
    FakeShell shell;
};

TEST(VersionCheck, SpeaksOnlyOfANewerVersion) {
    const std::pair<std::optional<QByteArray>, bool> cases[] = {
        {std::nullopt, false},
        {QByteArray(), false},
        {QByteArray("<html>404</html>"), false},
        {QByteArray("[other]\nbanben=9\n"), false},
        {QByteArray("[chaoxin]\r\nbanben=3.7\r\ndownurl=http://x/\r\n"), false},
        {QByteArray("[chaoxin]\nbanben=3.6\n"), false},
        {"[chaoxin]\nbanben="_ba + QByteArray(127, '0') + "9\n", false},
        {"\xEF\xBB\xBF[chaoxin]\nbanben=\"3.8\"\ndownurl='http://x/?a=b;c,d'\n"_ba, true},
        {gbkFromText(u"[ChaoXin]\nbanben = 3.8 版\ndownurl=http://x/?a=b;c,d\n"_s), true},
    };
    for (const auto& [reply, newer] : cases) {
        VersionChecked done(reply);
        EXPECT_EQ(done.http.paths, QStringList{u"/chaoxin/banbenupdate.txt"_s});
        EXPECT_EQ(QFile::exists(done.folder.filePath(u"banben.ini"_s)), reply.has_value());
        const QStringList told =
            newer ? QStringList{u"观潮台|发现软件有新的版本，请前去下载！"_s} : QStringList();
        EXPECT_EQ(done.dialogs.shown, told);
        EXPECT_EQ(done.shell.opened, newer ? QStringList{u"http://x/?a=b;c,d"_s} : QStringList());
    }
    EXPECT_FALSE(
        QFile::exists(VersionChecked(QByteArray(70000, 'x')).folder.filePath(u"banben.ini"_s)));
    EXPECT_TRUE(VersionChecked("[chaoxin]\nbanben=9\n"_ba, u"/none/"_s).dialogs.shown.isEmpty())
        << "the file can't be written";
}

}  // namespace guanchao
