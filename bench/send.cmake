kolvane_benchmark(send_bench send_bench.cpp process.cpp LINK bench_support)
target_compile_definitions(send_bench PRIVATE KOLVANE_PROGRAM="$<TARGET_FILE:kolvane>")
add_dependencies(send_bench kolvane devlnk)
