#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: the normal build, the
# core tests again under AddressSanitizer and UBSan, and the file-reader fuzzers.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
jobs="$(nproc)"

echo "== build and test =="
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$jobs"
xvfb-run -a ctest --test-dir build --output-on-failure -j"$jobs"

echo "== core tests under AddressSanitizer and UBSan =="
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DVELK_SANITIZE=ON -DVELK_BUILD_GUI=OFF
cmake --build build-asan -j"$jobs" --target velk_core_tests velk-batch layer_check
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-asan --output-on-failure -j"$jobs"

echo "== fuzzers =="
./scripts/fuzz.sh "${FUZZ_SECONDS:-60}"
