kolvane_benchmark(window_bench window_bench.cpp LINK bench_support kolvane_window)
target_compile_definitions(window_bench PRIVATE KOLVANE_LIBRARY_FOLDER="${KOLVANE_OUTPUT}/lib")
add_dependencies(window_bench devlnk)
