kolvane_benchmark(inspect_bench inspect_bench.cpp LINK bench_support kolvane_inspect)
target_include_directories(inspect_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
