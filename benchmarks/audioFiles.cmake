# Fidelity and speed of the audio files beside sox and ffmpeg; benchmarks/fidelity runs it.
add_executable(audioFiles_benchmark audioFiles.cpp "${CMAKE_SOURCE_DIR}/tests/audio/AudioTestFiles.cpp")
target_include_directories(audioFiles_benchmark PRIVATE "${CMAKE_SOURCE_DIR}/tests")
target_link_libraries(audioFiles_benchmark PRIVATE orlenta_audio PkgConfig::SNDFILE GTest::gtest orlenta_warnings)
