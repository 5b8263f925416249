#!/usr/bin/env bash
# tools/install_packages.sh SECTION...: installs what is missing among the packages that packages.txt
# lists in these sections; does nothing where all are there. Says before how much comes.
set -eu
cd "$(dirname "$0")/.."

packages_of() {
    awk -v section="$1" '/^#/ { split($2, name, ":"); wanted = name[1] == section; next } wanted' packages.txt
}

missing=()
for section in "$@"; do
    for package in $(packages_of "$section"); do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok' || missing+=("$package")
    done
done
[ "${#missing[@]}" -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    echo "缺少的软件包要用管理员权限安装，sudo 可能会问您的密码。"
    if ! command -v sudo >/dev/null; then
        echo "这台电脑没有 sudo，请用 root 运行：apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

install=(apt-get install --no-install-recommends)
"${as_root[@]}" apt-get update -qq
"${install[@]}" --print-uris -qq "${missing[@]}" |
    awk '{ bytes += $3 } END { printf "要安装 %d 个软件包，下载约 %.0f MB。\n", NR, bytes / 1e6 }'
echo "其中：${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}" -y -qq "${missing[@]}" >/dev/null
