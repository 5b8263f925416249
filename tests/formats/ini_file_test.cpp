#include "formats/ini_file.h"

#include <QTemporaryDir>

#include "formats/gbk.h"
#include "tests/support/files.h"

namespace guanchao {

TEST(IniFileTest, ReadsAndChangesOneLine) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.ini"_s);
    writeFile(path, "; note\r\n[read]\r\nfenshidm = SH600585 \r\n\r\n[Other]\r\nfenshidm='x'\r\n");
    IniFile ini(path);
    EXPECT_EQ(ini.value(u"READ"_s, u"FenShiDm"_s), u"SH600585"_s);
    EXPECT_EQ(ini.value(u"other"_s, u"fenshidm"_s), u"x"_s);
    EXPECT_EQ(ini.value(u"read"_s, u"none"_s), std::nullopt);
    EXPECT_EQ(ini.value(u"none"_s, u"fenshidm"_s), std::nullopt);
    EXPECT_TRUE(ini.hasSection(u"OTHER"_s));
    EXPECT_FALSE(ini.hasSection(u"none"_s));
    EXPECT_TRUE(ini.setValue(u"read"_s, u"fenshidm"_s, u"SZ000001"_s));
    EXPECT_TRUE(ini.setValue(u"read"_s, u"jintuopan"_s, u"0"_s));
    EXPECT_TRUE(ini.setValue(u"new"_s, u"a"_s, u"=b"_s));
    EXPECT_EQ(contentOf(path),
              QByteArray("; note\n[read]\njintuopan=0\nfenshidm=SZ000001\n\n[Other]\n"
                         "fenshidm='x'\n[new]\na==b\n"));
    EXPECT_EQ(IniFile(path).value(u"new"_s, u"a"_s), u"=b"_s);
    EXPECT_TRUE(ini.setValue(u"new"_s, u"a"_s, u"é"_s));
    EXPECT_EQ(IniFile(path).value(u"new"_s, u"a"_s), u"é"_s) << "its bytes are GBK's too";
    EXPECT_FALSE(IniFile(folder.filePath(u"no/a.ini"_s)).setValue(u"a"_s, u"b"_s, u"c"_s));
    // As its user has written it.
    for (const QByteArray& bytes :
         {gbkFromText(u"[s]\nk=芯片"_s), u"\uFEFF[s]\r\nk=芯片\r\n"_s.toUtf8(),
          u"[s]\nk=芯片"_s.toUtf8()}) {
        writeFile(path, bytes);
        EXPECT_EQ(IniFile(path).value(u"s"_s, u"k"_s), u"芯片"_s) << bytes.toHex().toStdString();
    }
}

}  // namespace guanchao
