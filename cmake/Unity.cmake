# A unity build (CMAKE_UNITY_BUILD) compiles the sources of one folder of a target as one, which takes
# a third of the time. So a name of file scope stands once in a folder: tools/check-units. What does
# not ask for it is compiled source by source.
set(FEXORA_UNITY "${CMAKE_UNITY_BUILD}")
set(CMAKE_UNITY_BUILD OFF)
function(fexora_unity_by_folder target)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source NORMALIZE OUTPUT_VARIABLE folder)
    cmake_path(GET folder PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    string(MAKE_C_IDENTIFIER "${folder}" group)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD "${FEXORA_UNITY}" UNITY_BUILD_MODE GROUP)
endfunction()

# Sources with CLI11 in them run once a start and take longest to compile: alone, and less optimized.
function(fexora_read_command_line)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON
                                                 COMPILE_OPTIONS $<$<CONFIG:Release>:-O1>)
endfunction()
