#!/usr/bin/env bash
# Builds the file-reader fuzzers with clang in build-fuzz and runs each for the
# given number of seconds (default 60). Any crash, sanitizer report, leak,
# timeout or memory overrun fails the script; the input is kept under
# build-fuzz/artifacts.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
targets=(project_reader settings_reader deck_reader)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVELK_FUZZ=ON -DVELK_BUILD_GUI=OFF
cmake --build build-fuzz -j"$(nproc)" --target "${targets[@]/#/fuzz_}"

mkdir -p build-fuzz/artifacts
for name in "${targets[@]}"; do
  echo "== fuzz_${name}: ${seconds} s =="
  # New inputs go to a scratch corpus; the seeds in fuzz/corpus stay as they are.
  work="build-fuzz/corpus/${name}"
  mkdir -p "$work"
  ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=0 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "build-fuzz/fuzz/fuzz_${name}" "$work" "fuzz/corpus/${name}" \
      -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=1024 \
      -print_final_stats=1 -artifact_prefix="build-fuzz/artifacts/${name}-"
done
