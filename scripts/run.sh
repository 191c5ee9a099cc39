#!/usr/bin/env bash
# Installs what is missing, builds, and starts the desktop program.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j"$(nproc)"
exec ./build/velk "$@"
