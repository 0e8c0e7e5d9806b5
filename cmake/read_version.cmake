# SPDX-License-Identifier: MIT

# Sets `result` to the version, such as 1.0.0, that the macros of `header` spell out.
function(quxml_read_version header result)
  file(STRINGS ${header} lines REGEX "^#define QUXML_VERSION_(MAJOR|MINOR|PATCH) +[0-9]+$")
  string(REGEX REPLACE "#define QUXML_VERSION_[A-Z]+ +" "" numbers "${lines}")
  list(LENGTH numbers count)
  if(NOT count EQUAL 3)
    message(FATAL_ERROR "${header} must define major, minor and patch, in this order")
  endif()
  list(JOIN numbers "." version)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  set(${result} ${version} PARENT_SCOPE)
endfunction()
