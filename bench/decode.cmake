kolvane_benchmark(decode_bench decode_bench.cpp process.cpp LINK bench_support)
target_include_directories(decode_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(decode_bench PRIVATE KOLVANE_PROGRAM="$<TARGET_FILE:kolvane>")
add_dependencies(decode_bench kolvane)
