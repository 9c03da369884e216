# Compiler settings for all targets.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

find_program(ORLENTA_CCACHE ccache)
if(ORLENTA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ORLENTA_CCACHE}")
endif()
find_program(ORLENTA_MOLD mold)
if(ORLENTA_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH)

add_library(orlenta_warnings INTERFACE)
target_compile_options(orlenta_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor)
if(ORLENTA_WARNINGS_AS_ERRORS)
  target_compile_options(orlenta_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 issues false warnings in its own and Qt's headers when sanitizers or optimisation change inlining.
  target_compile_options(orlenta_warnings INTERFACE -fcoroutines -Wno-maybe-uninitialized -Wno-error=restrict
    -Wno-error=stringop-overflow -Wno-error=array-bounds -Wno-error=stringop-overread -Wno-error=free-nonheap-object)
  if(CMAKE_UNITY_BUILD)
    # Unity files include the sources, so g++ warns of their anonymous types as if they were in headers.
    target_compile_options(orlenta_warnings INTERFACE -Wno-subobject-linkage)
  endif()
endif()

if(ORLENTA_SANITIZE)
  add_compile_options(-fsanitize=${ORLENTA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORLENTA_SANITIZE})
endif()
if(ORLENTA_FUZZERS)
  # Coverage to guide the fuzzers, which link the fuzzing engine themselves.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
