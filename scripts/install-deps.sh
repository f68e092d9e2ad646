#!/usr/bin/env bash
# Installs every Debian package that building, testing, benchmarking, fuzzing, the API
# reference and the Debian packages need.
# Idempotent: packages that are already present are left alone, and when nothing is
# missing the script does not touch apt at all.
set -euo pipefail

packages=(
  build-essential
  cmake
  pkg-config
  qtbase5-dev
  libqt5sql5-sqlite
  libgtest-dev
  libgmock-dev
  libbenchmark-dev
  clang
  libclang-rt-14-dev
  python3
  doxygen
  graphviz
  dpkg-dev
  fakeroot
  lintian
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
  sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
