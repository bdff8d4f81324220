# Included by the tests' folder only: CMake reads the compiler and its properties from the variables of a folder, so the
# libraries and programs are still compiled by the project's compiler.
set(KOLVANE_TEST_COMPILER "" CACHE STRING "Clang, if available, for the tests' own code; empty: the project's compiler")
if(KOLVANE_TEST_COMPILER)
  find_program(KOLVANE_TEST_COMPILER_PATH ${KOLVANE_TEST_COMPILER})
endif()
if(NOT KOLVANE_TEST_COMPILER_PATH)
  return()
endif()

set(CMAKE_CXX_COMPILER ${KOLVANE_TEST_COMPILER_PATH})
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -dumpversion OUTPUT_VARIABLE CMAKE_CXX_COMPILER_VERSION
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CMAKE_CXX_COMPILER_ID Clang)
set(CMAKE_CXX_COMPILER_FRONTEND_VARIANT GNU)
# The flags are the project compiler's.
set(CMAKE_CXX_FLAGS "")
include(Compiler/Clang-CXX)
