#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the fuzzer of the stream loader with clang and runs it for a while: fuzz_load_stream.sh FOLDER SECONDS
set -euo pipefail
folder=$1 seconds=$2
cd "$(dirname "$0")/../.."
mkdir -p "$folder"
generators=zok/_src/zok_sub_kernel
mapfile -t sources < <(find $generators qem/_src/qem_core/mode -name '*.cpp' \
  ! -path '*/_math/*' ! -name blas.cpp; echo $generators/_math/modular_power.cpp)
clang++ -std=c++20 -O1 -g -mavx -DORV_TAG=g9 -ffp-contract=off -Wno-ignored-attributes \
  -fsanitize=fuzzer,address,undefined -fno-sanitize=alignment -Iinclude -I. \
  tests/zok/fuzz_load_stream.cpp "${sources[@]}" -o "$folder/fuzz_load_stream"
cd "$folder"
./fuzz_load_stream -max_total_time="$seconds"
