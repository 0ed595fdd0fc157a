# The build of a host program: what its author would write.
cmake_minimum_required(VERSION 3.25)
project(consumer CXX)
find_package(laminate ${WANTED_VERSION} REQUIRED)
add_executable(consumer main.cpp)
target_link_libraries(consumer PRIVATE laminate::laminate)
