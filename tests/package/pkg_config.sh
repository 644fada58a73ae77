# pkg_config.sh PREFIX LIBDIR C_COMPILER CXX_COMPILER: builds and runs the consumer in both languages.
prefix=$1 libdir=$1/$2 cc=$3 cxx=$4
source=$(dirname "$0")/consumer/consumer.c
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

export PKG_CONFIG_PATH=$libdir/pkgconfig
strict="-pedantic -Wall -Wextra -Werror"
compile_flags=$($PKG_CONFIG --cflags orv)
link_flags="$($PKG_CONFIG --libs orv) -lm -Wl,-rpath,$libdir"
$cc $strict $compile_flags "$source" -o "$work/c" $link_flags
$cxx $strict $compile_flags -x c++ "$source" -x none -o "$work/cxx" $link_flags
"$work/c"
"$work/cxx"

# The library finds the service library from where it is now, not through an application's path.
if env -u LD_LIBRARY_PATH ldd "$libdir/liborv_qem_avx.so" | grep 'not found'; then exit 1; fi

# The command, where it was built, runs from the moved tree.
[ ! -e "$prefix/bin/orv" ] || "$prefix/bin/orv" --version >/dev/null
