# Settings that hold for every target, and the functions by which the folders declare theirs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(KOLVANE_OUTPUT ${CMAKE_BINARY_DIR} CACHE PATH "Folder that receives bin/ and lib/")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${KOLVANE_OUTPUT}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${KOLVANE_OUTPUT}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/archive)

find_program(KOLVANE_CCACHE ccache)
if(KOLVANE_CCACHE)
  # ccache needs this for precompiled headers.
  set(CMAKE_C_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${KOLVANE_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_C_COMPILER_LAUNCHER})
endif()

set(KOLVANE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
set(KOLVANE_SANITIZE_OPTIONS "" CACHE STRING "Further compiler options for what is sanitized, a list")
set(KOLVANE_SANITIZE_COMPUTING_OPTIONS "" CACHE STRING "The same for libraries that compute much in tests")
set(KOLVANE_SANITIZE_TEST_OPTIONS "" CACHE STRING "The same for the tests' own code")
if(KOLVANE_SANITIZE)
  # Everything is instrumented, including the tests' own code: the linker takes the first copy of an inline function
  # that it finds. scripts/check-instrumented checks this.
  set(sanitizer_options -fsanitize=${KOLVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KOLVANE_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Libraries loaded at run time have hidden types, which that check takes for different ones.
    list(APPEND sanitizer_options -fno-sanitize=function)
    # Programs and the libraries that they load share one run-time library, GCC's default; a fuzz target contains it.
    set(asan libclang_rt.asan-x86_64.so)
    if(NOT KOLVANE_SANITIZE MATCHES fuzzer)
      add_link_options(-shared-libasan)
    endif()
  else()
    set(asan libasan.so)
  endif()
  # The sanitizer's own library must be loaded before all others.
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${asan} OUTPUT_VARIABLE asan
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(KOLVANE_PRELOAD_FIRST "${asan}:")
  cmake_path(GET asan PARENT_PATH asan)
  add_link_options(LINKER:-rpath,${asan})
endif()

set(of_sources "$<IF:$<BOOL:$<TARGET_PROPERTY:KOLVANE_COMPUTING>>,${KOLVANE_SANITIZE_COMPUTING_OPTIONS},${KOLVANE_SANITIZE_OPTIONS}>")
add_library(kolvane_options INTERFACE)
target_compile_options(kolvane_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
                       -Wold-style-cast -Woverloaded-virtual
                       # GCC 12 wrongly reports overlaps in "x" + std::to_string(n).
                       $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
                       # Clang includes these in -Wconversion and -Wextra, GCC does not.
                       $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
                       $<$<CXX_COMPILER_ID:Clang>:-Wno-missing-field-initializers>
                       # GCC's default.
                       $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fsized-deallocation>
                       ${sanitizer_options}
                       "$<IF:$<BOOL:$<TARGET_PROPERTY:KOLVANE_TEST>>,${KOLVANE_SANITIZE_TEST_OPTIONS},${of_sources}>")
target_compile_definitions(kolvane_options INTERFACE QT_NO_KEYWORDS)
# The release is hardened like the distribution's own packages. The tests' own code is not optimised, which
# fortification requires, and the sanitizers have their own checks.
if(KOLVANE_SANITIZE)
  target_compile_definitions(kolvane_options INTERFACE KOLVANE_SANITIZED)
else()
  target_compile_options(kolvane_options INTERFACE
    "$<$<AND:$<CONFIG:Release>,$<NOT:$<BOOL:$<TARGET_PROPERTY:KOLVANE_TEST>>>>:-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
  target_link_options(kolvane_options INTERFACE LINKER:-z,relro,-z,now)
endif()
target_include_directories(kolvane_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)

# Precompiled headers. A file must still include what it uses: the presets dev and fuzz do not use them.
option(KOLVANE_PRECOMPILE "Precompile what many files include" OFF)
set(logic_headers <algorithm> <array> <cerrno> <charconv> <cstddef> <cstdint> <cstring> <filesystem> <functional> <map>
                  <memory> <optional> <span> <string> <string_view> <utility> <vector>)
set(computing_headers ${logic_headers})
set(window_headers ${logic_headers} <QAction> <QApplication> <QComboBox> <QLabel> <QLineEdit> <QPainter> <QPushButton>
                   <QScreen> <QString> <QStringList> <QTimer> <QVBoxLayout> <QWidget>)
set(test_headers ${logic_headers} <gtest/gtest.h>)
set(gui_test_headers ${window_headers} <gtest/gtest.h> <QClipboard> <QMenu> <QMessageBox> <QTest>)

# Several files are compiled as one: the tests in the presets release and asan, everything in asan. A name in an
# anonymous namespace must then be unique in its folder.
option(KOLVANE_UNITY_TESTS "Compile the tests in batches" OFF)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 24)

# kolvane_precompiled(TARGET KIND): TARGET is compiled with the headers of KIND (logic, computing, window, test, gui_test).
# The first target of a kind compiles them for all others, so all of a kind need the same options.
function(kolvane_precompiled target kind)
  if(NOT KOLVANE_PRECOMPILE)
    return()
  endif()
  # The compiler cache must see which precompiled header a file was compiled with.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  get_property(first GLOBAL PROPERTY KOLVANE_PRECOMPILED_${kind})
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE ${${kind}_headers})
    set_property(GLOBAL PROPERTY KOLVANE_PRECOMPILED_${kind} ${target})
  endif()
endfunction()

# kolvane_library(NAME [sources...] [COMPUTING] [EXCEPT files...] [LINK targets...]): one logic target, standard C++ only:
# every source file of the folder except EXCEPT, and the sources listed. The tests of a COMPUTING library spend their time
# in it rather than waiting: it is optimised under the sanitizers too.
function(kolvane_library name)
  cmake_parse_arguments(ARG "COMPUTING;WINDOW" "" "EXCEPT;LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp *.h)
  list(REMOVE_ITEM sources ${ARG_EXCEPT} "")
  add_library(${name} STATIC ${sources} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC kolvane_options ${ARG_LINK})
  # An exchange through a list calls the C library some twenty times.
  if(NOT ARG_WINDOW)
    target_compile_options(${name} PRIVATE -fno-plt)
  endif()
  set_target_properties(${name} PROPERTIES KOLVANE_COMPUTING ${ARG_COMPUTING})
  # Not in optimised code: there GCC 12 forgets which headers are the system's and warns of overflows in std::string
  # that cannot happen.
  if(KOLVANE_SANITIZE)
    if(ARG_WINDOW)
      kolvane_precompiled(${name} window)
    elseif(ARG_COMPUTING)
      kolvane_precompiled(${name} computing)
    else()
      kolvane_precompiled(${name} logic)
    endif()
  endif()
endfunction()

# kolvane_ui_library(NAME ...): like kolvane_library, for a window target: Qt Widgets allowed.
function(kolvane_ui_library name)
  kolvane_library(${name} WINDOW ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(${name} PUBLIC Qt6::Widgets)
  target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII)
endfunction()

# kolvane_test_program(NAME PRECOMPILED sources... [LINK targets...]): common to the kinds of test programs below.
function(kolvane_test_program name precompiled)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE kolvane_options ${ARG_LINK} kolvane_test_pattern GTest::gtest)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # Optimising the tests' own code takes longer than it saves; Qt requires -fPIC, and all share precompiled headers.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0> -fPIC)
  set_target_properties(${name} PROPERTIES KOLVANE_TEST ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(KOLVANE_UNITY_TESTS)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
  endif()
  if(precompiled STREQUAL gui_test)
    # Qt defines each test's folders; nothing uses them, and all tests must share one precompiled header.
    target_compile_options(${name} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
  endif()
  kolvane_precompiled(${name} ${precompiled})
endfunction()

option(KOLVANE_TESTS_TOGETHER "Run the tests of a program in one process" OFF)

# kolvane_discover(PROGRAM [FILTER filter] [LABEL label] [COST seconds] [ENVIRONMENT assignments...]): registers the
# tests of a GoogleTest program with CTest, which starts the costly ones first: each in its own process or, with
# KOLVANE_TESTS_TOGETHER, all in one, which is faster and also tests how one test affects the next.
function(kolvane_discover program)
  cmake_parse_arguments(ARG "" "FILTER;LABEL;COST" "ENVIRONMENT" ${ARGN})
  set(properties "")
  if(ARG_LABEL)
    list(APPEND properties LABELS ${ARG_LABEL})
  endif()
  if(ARG_COST)
    list(APPEND properties COST ${ARG_COST})
  endif()
  if(ARG_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT ${ARG_ENVIRONMENT})
  endif()
  if(KOLVANE_TESTS_TOGETHER)
    set(test ${program}${ARG_LABEL})
    add_test(NAME ${test} COMMAND ${program} --gtest_brief=1 --gtest_filter=${ARG_FILTER})
    if(properties)
      set_tests_properties(${test} PROPERTIES ${properties})
    endif()
  else()
    gtest_discover_tests(${program} DISCOVERY_MODE PRE_TEST TEST_FILTER ${ARG_FILTER} PROPERTIES ${properties})
  endif()
endfunction()

# kolvane_test(NAME sources... [PRELOAD library] [UNSANITIZED filter] [COST seconds] [LINK targets...]): one GoogleTest
# program, run with the library loaded first. The tests that UNSANITIZED selects have the label unsanitized: they cannot
# run in a sanitizer's build.
function(kolvane_test name)
  cmake_parse_arguments(ARG "" "PRELOAD;UNSANITIZED;COST" "" ${ARGN})
  kolvane_test_program(${name} test ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE GTest::gtest_main)
  set(properties "")
  if(ARG_COST)
    list(APPEND properties COST ${ARG_COST})
  endif()
  if(ARG_PRELOAD)
    list(APPEND properties ENVIRONMENT "LD_PRELOAD=${KOLVANE_PRELOAD_FIRST}${ARG_PRELOAD}")
  endif()
  if(ARG_UNSANITIZED)
    kolvane_discover(${name} FILTER ${ARG_UNSANITIZED} LABEL unsanitized ${properties})
    kolvane_discover(${name} FILTER "*-${ARG_UNSANITIZED}" ${properties})
  else()
    kolvane_discover(${name} FILTER "*" ${properties})
  endif()
endfunction()

# kolvane_gui_test(NAME sources... [COST seconds] [LINK targets...]): the same with a QApplication on the offscreen
# platform.
function(kolvane_gui_test name)
  cmake_parse_arguments(ARG "" "COST" "" ${ARGN})
  kolvane_test_program(${name} gui_test ${PROJECT_SOURCE_DIR}/tests/gui/main.cpp ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE Qt6::Widgets Qt6::Test)
  kolvane_discover(${name} FILTER "*" COST "${ARG_COST}" ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# kolvane_x_test(NAME sources... [LINK targets...]): one GoogleTest program without a QApplication, run as a whole on
# its own plain X server.
function(kolvane_x_test name)
  kolvane_test_program(${name} gui_test ${ARGN})
  target_link_libraries(${name} PRIVATE GTest::gtest_main Qt6::Widgets Qt6::Test)
  kolvane_on_x(${name} ${name})
endfunction()

# kolvane_on_x(TEST PROGRAM): the target PROGRAM run as a whole on its own plain X server.
function(kolvane_on_x test program)
  add_test(NAME OnX.${test} COMMAND ${PROJECT_SOURCE_DIR}/tests/gui/with_xvfb $<TARGET_FILE:${program}>)
endfunction()

# kolvane_benchmark(NAME sources... [LINK targets...]): one program in build/<preset>/bench; it asserts nothing.
function(kolvane_benchmark name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE kolvane_options ${ARG_LINK})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
endfunction()

# kolvane_fuzz(NAME sources... [LINK targets...]): one libFuzzer program of NAME_fuzz.cpp and the sources listed.
function(kolvane_fuzz name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name}_fuzz ${name}_fuzz.cpp ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name}_fuzz PRIVATE kolvane_options ${ARG_LINK})
  target_include_directories(${name}_fuzz PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests
                             ${PROJECT_SOURCE_DIR}/tests/device)
  target_link_options(${name}_fuzz PRIVATE -fsanitize=fuzzer)
  set_target_properties(${name}_fuzz PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/targets)
  add_dependencies(fuzz_targets ${name}_fuzz)
endfunction()
