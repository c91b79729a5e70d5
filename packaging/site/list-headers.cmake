# cmake -P: the headers that are installed, in one line on standard error.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/PublicHeaders.cmake)
public_headers(fexora/fexora.h headers)
list(JOIN headers " " line)
message("${line}")
