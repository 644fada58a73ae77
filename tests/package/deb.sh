#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# deb.sh WORK SOURCE CC PACKAGE...: lintian has nothing to say of the packages (or of all in a folder);
# installed by dpkg into an empty system they work there, by their own files alone; removed again they
# leave nothing.
set -euo pipefail
work=$1 source=$2 cc=$3
shift 3
[ ! -d "$1" ] || set -- "$1"/*.deb
fail() { echo "deb.sh: $*" >&2; exit 1; }

# The address is for who publishes packages to give: -DORV_MAINTAINER=...
lintian --allow-root --fail-on error,warning \
  --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog "$@"

root=$work/root
rm -rf "$root"
mkdir -p "$root"/var/lib/dpkg/{updates,info}
touch "$root"/var/lib/dpkg/{status,available}
as_root=()
[ "$(id -u)" = 0 ] || as_root=(fakeroot)
# Debian's own libraries are those of this machine.
in_root() {
  "${as_root[@]}" dpkg --root="$root" --log=/dev/null --force-depends "$@" >"$work/dpkg.log" 2>&1 ||
    { cat "$work/dpkg.log" >&2; fail "dpkg $1 failed"; }
}
for architecture in amd64 i386; do in_root --add-architecture "$architecture"; done
in_root --install "$@"
in_root --verify
[ ! -s "$work/dpkg.log" ] || fail "$(cat "$work/dpkg.log")"

for libraries in "$root"/usr/lib/*-linux-gnu; do
  size=-m64
  [ "${libraries##*/}" != i386-linux-gnu ] || size=-m32
  export LD_LIBRARY_PATH=$libraries PKG_CONFIG_PATH=$libraries/pkgconfig
  # shellcheck disable=SC2046,SC2086 # flags are words
  $cc $size -std=c11 "$source/tests/package/consumer.c" -o "$work/consumer" \
    $(pkg-config --cflags --libs orv) -lm
  "$work/consumer"
  for file in "$libraries"/*.so "$work/consumer"; do
    ! ldd "$file" | grep 'not found' || fail "$file does not find its libraries"
  done
  ldd "$work/consumer" | grep "$libraries/liborv_qem_avx" >/dev/null || fail "another library is used"
done
data=$root/usr/share/doc/orv/examples/data
if [ -e "$root/usr/bin/orv" ]; then
  LD_LIBRARY_PATH=$(printf '%s:' "$root"/usr/lib/*-linux-gnu) "$root/usr/bin/orv" \
    stats "$data/iris.csv" | grep Sepal.Length >/dev/null || fail "orv does not read $data"
fi

mapfile -t installed < <("${as_root[@]}" dpkg-query --admindir="$root/var/lib/dpkg" -W \
  -f '${binary:Package}\n')
in_root --purge "${installed[@]}"
left=$(find "$root/usr" ! -type d 2>/dev/null || true)
[ -z "$left" ] || fail "left behind: $left"
