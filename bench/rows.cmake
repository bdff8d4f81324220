kolvane_benchmark(rows_bench rows_bench.cpp LINK kolvane_script benchmark::benchmark)
target_include_directories(rows_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
