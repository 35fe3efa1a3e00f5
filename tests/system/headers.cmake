# The public headers, each alone in a source file, in every version of the language that they are for.
# The build fails where one does not compile without a warning.

function(add_header_check name source language standard)
  set(target header_${name}_${language}${standard})
  add_library(${target} OBJECT ${CMAKE_CURRENT_SOURCE_DIR}/headers/${source})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/include)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
  set_target_properties(${target} PROPERTIES
    ${language}_STANDARD ${standard}
    ${language}_STANDARD_REQUIRED ON
    ${language}_EXTENSIONS OFF)
endfunction()

foreach(standard 11 14 17 20)
  add_header_check(class class_header.cpp CXX ${standard})
  add_header_check(c c_header.cpp CXX ${standard})
  add_header_check(both both_headers.cpp CXX ${standard})
endforeach()

foreach(standard 99 11 17)
  add_header_check(c c_header.c C ${standard})
  # C, but not C++, takes "()" for a function of which nothing is known.
  target_compile_options(header_c_C${standard} PRIVATE -Wstrict-prototypes)
endforeach()
