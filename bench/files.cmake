kolvane_benchmark(files_bench files_bench.cpp LINK bench_support kolvane_component_logic)
target_include_directories(files_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
