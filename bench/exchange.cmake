kolvane_benchmark(exchange_bench exchange_bench.cpp echo_instrument.cpp LINK kolvane_terminal)
target_compile_definitions(exchange_bench PRIVATE KOLVANE_LIBRARY_FOLDER="${KOLVANE_OUTPUT}/lib")
add_dependencies(exchange_bench devlnk)
