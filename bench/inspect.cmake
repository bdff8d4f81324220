kolvane_benchmark(inspect_bench inspect_bench.cpp LINK kolvane_inspect benchmark::benchmark)
target_include_directories(inspect_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
