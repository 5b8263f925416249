// The rows of an exported library of themes: its tables dzhzhuti and dmb have the columns that
// these statements name, as those of the main store have.
#pragma once

#include "store/recordset.h"

namespace guanchao {

inline const QString themesQuery = QStringLiteral(
    "select zhutiname,dm,jc,datetime(ztktime) as ztktime,xiangguandu,guanzhudu from dzhzhuti");
inline constexpr int firstNumberOfTheme = 4;
inline const QString codesQuery =
    QStringLiteral("select dm,numdm,jc,shenmu,datetime(newdmtime) as newdmtime from dmb");

// What puts a row of the query into another store, with the time and the numbers that it bears
// there.
QString insertTheme(const Recordset& row, const QString& dm, const QString& ztktime,
                    const QString& numbers);
QString insertCode(const Recordset& row, const QString& dm, const QString& newdmtime);

}  // namespace guanchao
