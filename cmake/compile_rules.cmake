# What holds for quxml's own code and for nobody else's: warnings, sanitizers, plain ISO C++.
function(quxml_compile_rules target)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic
    -Wcast-align -Wcast-qual -Wconversion -Wdouble-promotion -Wextra-semi -Wformat=2 -Wmissing-declarations
    -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wredundant-decls -Wshadow -Wsign-conversion -Wundef
    -Wunused -Wzero-as-null-pointer-constant)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wduplicated-branches -Wduplicated-cond -Wlogical-op -Wsuggest-override)
  endif()
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE -Winconsistent-missing-override -Wunreachable-code)
  endif()
  if(QUXML_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(QUXML_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${QUXML_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${QUXML_SANITIZE})
  endif()
endfunction()
