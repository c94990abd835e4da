# Warnings and code generation for everything that is ours: link vqs_options privately.

add_library(vqs_options INTERFACE)
# The one root of the rooms' own headers. Public ones are below include/.
target_include_directories(vqs_options INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
  # What throws says so itself: taking back CMake's own /EHsc would be a warning (D9025).
  string(REPLACE "/EHsc" "" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
  target_compile_options(vqs_options INTERFACE /W4 /WX /permissive- /utf-8 /Brepro)
  target_compile_definitions(vqs_options INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX WIN32_LEAN_AND_MEAN)
else()
  target_compile_options(vqs_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
  # GCC copies and clears blocks of known size with string instructions of the processor, which take several times as long
  # as the runtime's functions.
  include(CheckCXXCompilerFlag)
  set(block_strategy unrolled_loop:128:noalign,libcall:-1:noalign)
  check_cxx_compiler_flag(-mmemcpy-strategy=${block_strategy} VQS_HAS_BLOCK_STRATEGIES)
  if(VQS_HAS_BLOCK_STRATEGIES)
    target_compile_options(vqs_options INTERFACE -mmemcpy-strategy=${block_strategy} -mmemset-strategy=${block_strategy})
  endif()
endif()
if(MINGW)
  target_compile_definitions(vqs_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()

# Code of programs.
add_library(vqs_exceptions INTERFACE)
if(MSVC)
  target_compile_options(vqs_exceptions INTERFACE $<$<COMPILE_LANGUAGE:CXX>:/EHsc>)
endif()

# Code that runs in a caller's process, or in a kernel: nothing in it throws, so that what is noexcept (C4577) is.
add_library(vqs_no_exceptions INTERFACE)
if(MSVC)
  target_compile_options(vqs_no_exceptions INTERFACE /EHs-c- /GR- /wd4577)
  target_compile_definitions(vqs_no_exceptions INTERFACE _HAS_EXCEPTIONS=0)
else()
  target_compile_options(vqs_no_exceptions INTERFACE -fno-exceptions $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>)
endif()
