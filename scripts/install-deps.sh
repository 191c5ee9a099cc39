#!/usr/bin/env bash
# Installs what is missing, from Debian's packages only.
set -euo pipefail
pkgs=(build-essential cmake qt6-base-dev libqt6opengl6-dev libgl-dev libglu1-mesa-dev
      googletest libgtest-dev xvfb xauth clang libclang-rt-dev libopenblas-dev
      libqt6svg6 qt6-svg-dev poppler-utils python3-meshio cloc)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -q
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q "${missing[@]}"
fi
