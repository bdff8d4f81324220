add_executable(query_only query_only.c)
set_target_properties(query_only PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
kolvane_benchmark(send_bench send_bench.cpp process.cpp LINK bench_support)
target_compile_definitions(send_bench PRIVATE KOLVANE_PROGRAM="$<TARGET_FILE:kolvane>"
                           KOLVANE_QUERY_ONLY="$<TARGET_FILE:query_only>")
add_dependencies(send_bench query_only kolvane devlnk)
