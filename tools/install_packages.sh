#!/usr/bin/env bash
# tools/install_packages.sh SECTION...: installs what is missing among the packages that packages.txt
# lists in these sections; does nothing where all are there. Says before how much comes.
set -euo pipefail
cd "$(dirname "$0")/.."

packages_of() {
    awk -v section="$1" '/^#/ { split($2, name, ":"); wanted = name[1] == section; next } wanted' packages.txt
}

missing=()
for section in "$@"; do
    for package in $(packages_of "$section"); do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q ' ok installed$' || missing+=("$package")
    done
done
[ "${#missing[@]}" -eq 0 ] && exit 0

by_hand() {
    echo "软件包没有装好。请用 root 运行下面两条命令，看它们说什么，然后再试：" >&2
    echo "  apt-get update" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
}

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || by_hand
    echo "缺少的软件包要用管理员权限安装，sudo 可能会问您的密码。"
    as_root=(sudo)
fi

install=(apt-get install --no-install-recommends)
# One source that doesn't answer leaves the others of use.
"${as_root[@]}" apt-get update -qq || echo "有软件源没有更新，用已有的列表继续。" >&2
"${install[@]}" --print-uris -qq "${missing[@]}" |
    awk '{ bytes += $3 } END { if (NR) printf "要安装 %d 个软件包，下载约 %.0f MB。\n", NR, bytes / 1e6 }' || by_hand
echo "其中：${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}" -y -qq "${missing[@]}" >/dev/null || by_hand
