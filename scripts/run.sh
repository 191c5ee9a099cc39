#!/usr/bin/env bash
# Installs what is missing, builds, and starts the desktop program.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
cmake -S . -B build-release -DCMAKE_BUILD_TYPE=Release
cmake --build build-release -j"$(nproc)" --target velk velk-batch
exec ./build-release/velk "$@"
