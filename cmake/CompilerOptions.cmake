# Warnings and code generation for everything that is ours: link vqs_options privately.

add_library(vqs_options INTERFACE)
if(MSVC)
  target_compile_options(vqs_options INTERFACE /W4 /WX /permissive- /utf-8)
  target_compile_definitions(vqs_options INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX WIN32_LEAN_AND_MEAN)
else()
  target_compile_options(vqs_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
endif()
if(MINGW)
  target_compile_definitions(vqs_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()

# Code that runs in a caller's process, or in a kernel: nothing in it throws.
add_library(vqs_no_exceptions INTERFACE)
if(MSVC)
  target_compile_options(vqs_no_exceptions INTERFACE /EHs-c- /GR-)
  target_compile_definitions(vqs_no_exceptions INTERFACE _HAS_EXCEPTIONS=0)
else()
  target_compile_options(vqs_no_exceptions INTERFACE -fno-exceptions $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>)
endif()
