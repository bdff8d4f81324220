pkg_check_modules(XCB_DAMAGE REQUIRED IMPORTED_TARGET xcb-damage)

kolvane_benchmark(empty_window empty_window.cpp LINK Qt6::Widgets)
kolvane_benchmark(startup_bench startup_bench.cpp process.cpp x_watch.cpp 
  LINK bench_support PkgConfig::XCB PkgConfig::XCB_DAMAGE)
target_include_directories(startup_bench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(startup_bench PRIVATE KOLVANE_PROGRAM="$<TARGET_FILE:kolvane>"
                           KOLVANE_EMPTY_WINDOW="$<TARGET_FILE:empty_window>")
add_dependencies(startup_bench empty_window kolvane devlnk)
