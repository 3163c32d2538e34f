# What packages are built with; CMake's own -O3 makes the agent a tenth larger and no jump faster.
foreach(language C CXX)
  string(REPLACE -O3 -O2 CMAKE_${language}_FLAGS_RELEASE "${CMAKE_${language}_FLAGS_RELEASE}")
endforeach()

# One interface target carries the options that every target of the project builds with.
add_library(VantrelOptions INTERFACE)
target_include_directories(VantrelOptions INTERFACE ${PROJECT_SOURCE_DIR})
# Warnings are errors in our own checks only (CMAKE_COMPILE_WARNING_AS_ERROR, see scripts/check): a newer compiler's
# opinion must not keep a person or a packager from a program that works.
target_compile_options(VantrelOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>)

# Hardening as Debian builds its packages, and control-flow protection where the processor has it.
target_compile_options(VantrelOptions INTERFACE -fstack-protector-strong)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|amd64")
  target_compile_options(VantrelOptions INTERFACE -fcf-protection)
endif()
target_link_options(VantrelOptions INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,--as-needed)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VANTREL_SANITIZE)
  # _FORTIFY_SOURCE=3 came with GCC 12 and clang 9; a distribution's own default of 2 would warn about redefinition.
  target_compile_options(VantrelOptions INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
endif()
include(CheckPIESupported)
check_pie_supported()

if(VANTREL_SANITIZE)
  target_compile_options(VantrelOptions INTERFACE
    -fsanitize=${VANTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(VantrelOptions INTERFACE -fsanitize=${VANTREL_SANITIZE})
endif()
if(VANTREL_FUZZ)
  target_compile_options(VantrelOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Line counts of one library. Counting everywhere would say no more and make all tests slower.
function(vantrel_count_lines TARGET)
  if(VANTREL_COVERAGE)
    target_compile_options(${TARGET} PRIVATE --coverage)
    target_link_options(${TARGET} INTERFACE --coverage)
  endif()
endfunction()
