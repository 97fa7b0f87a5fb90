#!/usr/bin/env bash
# Installs the build tree into a temporary prefix, builds the consumer project against the
# installed package alone, and runs it and the installed locmgr over the example tree.
#   run.sh BUILD_DIR SOURCE_DIR [CMAKE]
set -euo pipefail

build_dir=$1
source_dir=$2
cmake=${3:-cmake}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

# Quiet unless a step fails; then its whole output explains why.
step() {
  if ! "$@" >"$work/log" 2>&1; then
    echo "failed: $*"
    cat "$work/log"
    exit 1
  fi
}

expect() {
  local what=$1 expected=$2 actual=$3
  if [[ "$actual" != "$expected" ]]; then
    echo "$what: expected '$expected', got '$actual'"
    exit 1
  fi
}

step "$cmake" --install "$build_dir" --prefix "$prefix"

for file in lib/localization_manager/localization_manager.so lib/liblocalization_manager_host.a \
  bin/locmgr include/ulo/IObject.h include/localization_manager/ILocalizer.h \
  include/localization_manager/host/Host.h include/localization_manager/Version.h \
  lib/pkgconfig/localization-manager.pc share/doc/localization_manager/examples/host/hello.cpp \
  lib/cmake/LocalizationManager/LocalizationManagerConfig.cmake \
  lib/cmake/LocalizationManager/LocalizationManagerConfigVersion.cmake; do
  [[ -e "$prefix/$file" ]] || { echo "not installed: $file"; exit 1; }
done
# The platform layer is the module's own business.
[[ ! -e "$prefix/include/ulo/rtl" ]] || { echo "include/ulo/rtl must not be installed"; exit 1; }

step "$cmake" -S "$source_dir/tests/install/consumer" -B "$work/build" -G Ninja \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
step "$cmake" --build "$work/build" -j2

root=$source_dir/examples/localization
expect "consumer" "Herunterladen – File Courier" "$("$work/build/consumer" "$root")"
# The installed tool finds the installed module by itself.
expect "installed locmgr" "Загрузка" \
  "$("$prefix/bin/locmgr" get --root "$root" --scope download --culture ru title)"
icon_size=$(stat -c %s "$root/neutral/download/icon.svg")
hello_output=$'3 файла в 2 папках.\nicon.svg: '"$icon_size bytes"

# The example hosts, built from the documentation folder against the installed package.
examples=$prefix/share/doc/localization_manager/examples/host
step "$cmake" -S "$examples" -B "$work/examples" -G Ninja -DCMAKE_PREFIX_PATH="$prefix"
step "$cmake" --build "$work/examples" -j2
expect "hello" "$hello_output" "$("$work/examples/hello" "$root")"
step "$work/examples/texts" "$root" ru

# Without CMake: pkg-config gives the flags and the module's path.
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
expect "pkg-config version" "$("$prefix/bin/locmgr" --version | cut -d' ' -f2)" \
  "$(pkg-config --modversion localization-manager)"
module=$(pkg-config --variable=module localization-manager)
step c++ -std=c++17 -o "$work/hello-pc" "$examples/hello.cpp" -DLM_MODULE="\"$module\"" \
  $(pkg-config --cflags --libs --static localization-manager)
expect "hello through pkg-config" "$hello_output" "$("$work/hello-pc" "$root")"
echo "installed package works"
