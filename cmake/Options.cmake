# Choices of a build, and the flags that follow from them. As a part of another's build there is the
# library alone, unless that asks for more.

option(FEXORA_PROGRAMS "Build the programs" ${PROJECT_IS_TOP_LEVEL})
option(FEXORA_INSTALL "Install what is built" ${PROJECT_IS_TOP_LEVEL})
option(FEXORA_TESTS "Build the tests (with FEXORA_PROGRAMS)" OFF)
option(FEXORA_BENCH "Build the benchmarks" OFF)
option(FEXORA_FUZZ "Let libFuzzer drive the fuzz targets (clang only; with FEXORA_TESTS)" OFF)
option(FEXORA_WERROR "Treat warnings as errors" OFF)
set(FEXORA_SANITIZE "" CACHE STRING "Sanitizers for everything, like address,undefined")
set(FEXORA_RATES_URL "http://rates.fexora.example/rates.json"
    CACHE STRING "Address of the rates service (plain HTTP; overridden by the environment at run time)")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  add_compile_options(-Wall -Wextra -Wconversion -Wshadow)
endif()
if(FEXORA_WERROR)
  add_compile_options(-Werror)
endif()
if(FEXORA_TESTS OR FEXORA_SANITIZE)
  # An empty optional that is read, or a place behind the end of a list, ends the program.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
if(NOT FEXORA_SANITIZE)
  # A symbol that the library forgot to export stops the build, not a module at run time.
  add_link_options(-Wl,-z,defs)
endif()
if(FEXORA_SANITIZE)
  add_compile_options(-fsanitize=${FEXORA_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With sanitizers g++ 12 warns of variants that are set on every path.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
  add_link_options(-fsanitize=${FEXORA_SANITIZE})
  if(FEXORA_SANITIZE MATCHES "undefined")
    add_compile_options(-fsanitize=float-cast-overflow -fsanitize=float-divide-by-zero)
    # Dividing a double by zero is defined in IEEE arithmetic, and the rates rely on it.
    add_compile_options(-fno-sanitize=float-divide-by-zero)
  endif()
endif()
