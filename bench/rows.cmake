kolvane_benchmark(rows_bench rows_bench.cpp LINK bench_support kolvane_script)
target_include_directories(rows_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
