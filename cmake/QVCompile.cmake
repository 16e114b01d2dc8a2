# How everything here is compiled: C++20, all warnings, symbols hidden unless exported.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# Everything that is built lies in one place, so that a program finds its neighbours without being installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

# Programs are linked as they are compiled: to run at any address.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Checked library calls: level 3 knows sizes that show only while the program runs. What lacks it falls back to 2.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS "-O2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -Werror")
check_cxx_source_compiles("#include <cstddef>\n#if __USE_FORTIFY_LEVEL < 3\n#error\n#endif\nint main() {}" QV_HAS_FORTIFY_3)
unset(CMAKE_REQUIRED_FLAGS)
if(QV_HAS_FORTIFY_3)
  set(QV_FORTIFY_LEVEL 3)
else()
  set(QV_FORTIFY_LEVEL 2)
endif()

# qv_harden(TARGET): what turns a mistake that was overlooked into the end of the program instead of somebody else's code in
# it. Tests/Package/HardeningTest.cpp looks for it in the files that were built.
function(qv_harden target)
  target_compile_options(${target} PRIVATE -fstack-protector-strong)
  target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  # What is built to be looked into goes without the rest: unoptimised it does nothing, and sanitizers see more.
  if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    return()
  endif()
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
    target_compile_options(${target} PRIVATE -fcf-protection=full)
    # The linker marks what is made of marked units only, and Debian's start files are not marked. A shadow stack suits all
    # of them; a program's first instruction, though, is no target that indirect branches may take.
    target_link_options(${target} PRIVATE -Wl,-z,shstk)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
      target_link_options(${target} PRIVATE -Wl,-z,ibt)
    endif()
  endif()
  target_compile_options(${target} PRIVATE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${QV_FORTIFY_LEVEL})
endfunction()

# qv_compile_options(TARGET): our warnings, as errors, and the hardening.
function(qv_compile_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
                                           -Woverloaded-virtual -Werror)
  qv_harden(${target})
  # GCC 12 sees overlapping copies in its own std::string where there are none.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  # Under the sanitizers it warns of things in the standard library and Boost that only its instrumentation brings.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    target_compile_options(${target} PRIVATE -Wno-tsan -Wno-maybe-uninitialized)
  endif()
endfunction()
