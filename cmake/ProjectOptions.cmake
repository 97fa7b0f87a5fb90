# Settings shared by every target of the project.

# Sanitizers must instrument every translation unit that shares objects with the engine
# (tests, tools, benchmarks), so they are the one setting applied globally.
if(LM_SANITIZE)
  set(LM_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer)
  add_compile_options(${LM_SANITIZER_FLAGS})
  add_link_options(${LM_SANITIZER_FLAGS})
endif()

# ThreadSanitizer cannot share a build with AddressSanitizer. A host that loads the module
# must be instrumented as well as the module, so this too applies to every target.
option(LM_TSAN "Build everything with ThreadSanitizer" OFF)
if(LM_TSAN)
  if(LM_SANITIZE)
    message(FATAL_ERROR "LM_TSAN and LM_SANITIZE exclude each other; use two build folders")
  endif()
  set(LM_TSAN_FLAGS -fsanitize=thread -fno-omit-frame-pointer)
  add_compile_options(${LM_TSAN_FLAGS})
  add_link_options(${LM_TSAN_FLAGS})
endif()

# Applies the project's warnings and source-name mapping to one of our own targets.
# Contract messages name the source file through __FILE__; mapping the source directory away
# keeps those messages the same whatever folder the project is built in. ccache with a
# base_dir hands the compiler the source path relative to the build folder instead of the
# absolute one, so that form is mapped away too.
function(lm_configure_target target)
  target_compile_options(${target} PRIVATE -Wall -Wextra
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
  file(RELATIVE_PATH source_from_build "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
  string(REGEX REPLACE "/$" "" source_from_build "${source_from_build}")
  # Empty for a build inside the source folder, where the relative paths need no mapping.
  if(source_from_build)
    target_compile_options(${target} PRIVATE "-fmacro-prefix-map=${source_from_build}/=")
  endif()
  if(LM_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
