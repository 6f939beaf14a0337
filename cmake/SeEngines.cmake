# se_wrapper_engines_beside(<target> [<engine>...]): copies the reference engine's builds, or those that are named,
# into selibs/ beside a program, where the wrapper looks for engines. For projects that include this one and for
# those that find it installed.
function(se_wrapper_engines_beside target)
  set(engines ${ARGN})
  if(NOT engines)
    set(engines se_lib_beamv1.14 se_lib_harborv006)
  endif()
  set(folder $<TARGET_FILE_DIR:${target}>/selibs)
  foreach(engine ${engines})
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:se_wrapper::${engine}> ${folder}/
      VERBATIM)
  endforeach()
endfunction()
