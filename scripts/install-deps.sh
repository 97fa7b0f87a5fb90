#!/usr/bin/env bash
# Installs the Debian packages the project builds with, only those that are missing.
# Idempotent and silent when everything is already there.
set -euo pipefail

packages=(
  g++ make cmake ninja-build python3
  libboost-dev libboost-program-options-dev libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev
  # the benchmarks' comparison with GNU gettext (msgfmt), ICU (headers, libraries, genrb) and
  # Boost.Locale
  gettext libicu-dev icu-devtools libboost-locale-dev
  # the manual page of locmgr, made from its --help
  help2man
  # the install test builds a host through the installed pkg-config file
  pkg-config
  # the catalogs of "locmgr export" and "import" (XLIFF with libxml2, PO with libgettextpo),
  # and the translation tools their tests hand the catalogs to (msgfmt above, the Translate
  # Toolkit)
  libxml2-dev libgettextpo-dev translate-toolkit
  # fuzzing: clang with the libFuzzer and sanitizer runtimes
  clang libclang-rt-14-dev
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  if [[ "$status" != "install ok installed" ]]; then
    missing+=("$package")
  fi
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "installing: ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then
  sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
