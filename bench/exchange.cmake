kolvane_benchmark(exchange_bench exchange_bench.cpp comparison.cpp echo_instrument.cpp LINK kolvane_terminal)
kolvane_benchmark(list_exchange_bench
  list_exchange_bench.cpp comparison.cpp echo_instrument.cpp LINK kolvane_component_logic)
target_include_directories(list_exchange_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
foreach(target exchange_bench list_exchange_bench)
  target_compile_definitions(${target} PRIVATE KOLVANE_LIBRARY_FOLDER="${KOLVANE_OUTPUT}/lib")
  add_dependencies(${target} devlnk)
endforeach()
