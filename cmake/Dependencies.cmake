# All external dependencies. ARCHITECTURE.md gives the reason for each.
find_package(PkgConfig REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Concurrent Network DBus Test)
if(NOT ORLENTA_HEADLESS)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Gui Widgets Svg)
endif()
find_package(QCoro6 REQUIRED COMPONENTS Core Network DBus)
find_package(Qt6Keychain REQUIRED)
find_package(RapidJSON CONFIG REQUIRED)
find_package(GTest REQUIRED)
include(GoogleTest)

pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(SOXR REQUIRED IMPORTED_TARGET soxr)
pkg_check_modules(PULSE REQUIRED IMPORTED_TARGET libpulse)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libavutil)
pkg_check_modules(RUBBERBAND REQUIRED IMPORTED_TARGET rubberband)
pkg_check_modules(ESPEAK_NG REQUIRED IMPORTED_TARGET espeak-ng)
pkg_check_modules(LAME REQUIRED IMPORTED_TARGET lame)

# espeak-ng 1.52 introduced its own random generator.
include(CheckCXXSymbolExists)
set(CMAKE_REQUIRED_LIBRARIES PkgConfig::ESPEAK_NG)
check_cxx_symbol_exists(espeak_ng_SetRandSeed espeak-ng/espeak_ng.h ORLENTA_ESPEAK_NG_HAS_SEED)
unset(CMAKE_REQUIRED_LIBRARIES)

# Flite has no pkg-config file. Each library depends on those after it.
add_library(orlenta_flite INTERFACE)
find_path(FLITE_INCLUDE_DIR flite/flite.h REQUIRED)
target_include_directories(orlenta_flite SYSTEM INTERFACE ${FLITE_INCLUDE_DIR})
foreach(flite_library flite_cmu_us_slt flite_cmu_us_rms flite_cmu_us_awb flite_cmu_us_kal16 flite_usenglish flite_cmulex
    flite)
  find_library(${flite_library}_LIBRARY ${flite_library} REQUIRED)
  target_link_libraries(orlenta_flite INTERFACE ${${flite_library}_LIBRARY})
endforeach()

add_library(orlenta_rapidjson INTERFACE)
target_include_directories(orlenta_rapidjson SYSTEM INTERFACE ${RapidJSON_INCLUDE_DIRS} ${RAPIDJSON_INCLUDE_DIRS})
