#!/usr/bin/env bash
# A project that includes the source tree and is built with clang and its sanitizers links and runs.
source "$(dirname "$0")/package.sh"

for library in libstdc++ libc++; do
    build_project "$consumers/add_subdirectory" "-DLIBRARY_SOURCE=$PACKAGE_SOURCE" -DCMAKE_CXX_COMPILER=clang++ \
        "-DCMAKE_CXX_FLAGS=-stdlib=$library -fsanitize=address,undefined -fno-sanitize-recover=all"
    expect_consumer_works "$built/consumer"
done
