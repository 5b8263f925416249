// A services.ini as the program brought it along before its sections named kinds.
#pragma once

#include <QByteArray>

namespace guanchao {

inline const QByteArray formerServices =
    R"(; timeout: 整个请求最多等多少秒，0 是一直等。不写时 newspage 等 4 秒，quote、chart、history 和
; vendor 等 15 秒，search 照 caijiqi.ini（15 秒）。
; ahead: 更新行情时同时发出几个请求，1 到 6，不写时 3 个。
[quote]
host=https://hq.sinajs.cn
referer=https://finance.sina.com.cn/
timeout=15
[chart]
host=https://image.sinajs.cn
timeout=15
[stockpage]
host=https://finance.sina.com.cn
[sitepage]
host=https://quote.eastmoney.com
[newspage]
host=http://cj.gw.com.cn
timeout=4
[history]
host=
timeout=15
[vendor]
host=
timeout=15
[search]
timeout=15
)";

}  // namespace guanchao
