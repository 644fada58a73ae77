# SPDX-License-Identifier: MIT
# pkg_config.sh PREFIX LIBDIR C_COMPILER CXX_COMPILER: compiles each header alone, and builds and runs
# the consumers of the C interface, in both languages, and of the C++ face.
prefix=$1 libdir=$1/$2 cc=$3 cxx=$4
consumer=$(dirname "$0")/consumer
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

export PKG_CONFIG_PATH=$libdir/pkgconfig
strict="-pedantic -Wall -Wextra -Werror"
compile_flags=$($PKG_CONFIG --cflags orv)
link_flags="$($PKG_CONFIG --libs orv) -lm -Wl,-rpath,$libdir"
for compiler in "$cc -x c" "$cxx -x c++"; do
  for header in "$prefix"/include/orv/*.h; do
    echo "#include <orv/${header##*/}>" | $compiler $strict $compile_flags -fsyntax-only -
  done
  $compiler $strict $compile_flags "$consumer.c" -x none -o "$work/consumer" $link_flags
  "$work/consumer"
done

strict="$strict -Wshadow -Wconversion"
for header in "$prefix"/include/orv/*.hpp "$prefix"/include/orv/detail/*.hpp; do
  echo "#include <orv/${header#"$prefix"/include/orv/}>" |
    $cxx -x c++ $strict $compile_flags -fsyntax-only -
done
$cxx $strict $compile_flags -c "$consumer.cpp" -o "$work/first.o"
$cxx $strict $compile_flags -DORV_SECOND_UNIT -c "$consumer.cpp" -o "$work/second.o"
$cxx "$work/first.o" "$work/second.o" -o "$work/consumer" $link_flags
"$work/consumer"

# The library finds the service library from where it is now, not through an application's path.
if env -u LD_LIBRARY_PATH ldd "$libdir/liborv_qem_avx.so" | grep 'not found'; then exit 1; fi

# The command, where it was built, runs from the moved tree.
[ ! -e "$prefix/bin/orv" ] || "$prefix/bin/orv" --version >/dev/null
