#!/usr/bin/env bash
# A project that includes the source tree and chooses clang, its sanitizers and a standard library links and runs.
source "$(dirname "$0")/package.sh"

for library in libstdc++ libc++; do
    printf '%s(-stdlib=%s)\n' add_compile_options "$library" add_link_options "$library" >"$work/options.cmake"
    build_project "$consumers/add_subdirectory" "-DLIBRARY_SOURCE=$PACKAGE_SOURCE" -DCMAKE_CXX_COMPILER=clang++ \
        "-DCMAKE_PROJECT_add_subdirectory_consumer_INCLUDE=$work/options.cmake" \
        '-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined -fno-sanitize-recover=all'
    expect_consumer_works "$built/consumer"
done
