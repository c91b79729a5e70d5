# A unity build (CMAKE_UNITY_BUILD) compiles the sources of a target as one, or as few, which takes a
# third of the time. So a name of file scope stands once in the library, and once in each folder of
# what stands over it: tools/check-units. What does not ask for it is compiled source by source.
set(FEXORA_UNITY "${CMAKE_UNITY_BUILD}")
set(CMAKE_UNITY_BUILD OFF)

# fexora_compile_together(target [UNITS]): in so many units of nearly the same size, or in one.
function(fexora_compile_together target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD "${FEXORA_UNITY}" UNITY_BUILD_MODE GROUP)
  set(units 1)
  if(ARGC GREATER 1)
    set(units ${ARGV1})
  endif()
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  set(bytes 0)
  set(ends)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source)
    file(SIZE ${source} size)
    math(EXPR bytes "${bytes} + ${size}")
    list(APPEND ends ${bytes})
  endforeach()
  foreach(source end IN ZIP_LISTS sources ends)
    math(EXPR unit "(${end} - 1) * ${units} / ${bytes}")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP unit_${unit})
  endforeach()
endfunction()
