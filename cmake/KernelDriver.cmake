include_guard(GLOBAL)
# Drivers for 64-bit Windows, built with mingw-w64: freestanding code that imports nothing but the kernel.

find_path(VQS_DDK_INCLUDE ntddk.h
  PATHS /usr/x86_64-w64-mingw32/include/ddk NO_DEFAULT_PATH REQUIRED)

# Code of a driver links vqs_kernel behind everything that refers to the kernel.
add_library(vqs_kernel INTERFACE)
target_include_directories(vqs_kernel SYSTEM INTERFACE ${VQS_DDK_INCLUDE})
# Defined by the toolchain's headers twice, which C++ does not take; and a warning about instructions that nobody uses.
target_compile_definitions(vqs_kernel INTERFACE
  __INTRINSIC_DEFINED_InterlockedBitTestAndSet __INTRINSIC_DEFINED_InterlockedBitTestAndReset
  __INTRINSIC_DEFINED___cpuidex _CLANG_DISABLE_CRT_DEPRECATION_WARNINGS)
target_compile_options(vqs_kernel INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-ffreestanding -fno-stack-protector -fno-threadsafe-statics -mno-red-zone>)
target_link_options(vqs_kernel INTERFACE
  -nostdlib -s -Wl,--subsystem,native -Wl,--entry,DriverEntry -Wl,--exclude-all-symbols
  -Wl,--dynamicbase -Wl,--nxcompat LINKER:-Xlink=-brepro
  LINKER:-Xlink=-release LINKER:-Xlink=-driver:wdm)
target_link_libraries(vqs_kernel INTERFACE ntoskrnl)

function(vqs_add_kernel_driver target)
  add_library(${target} MODULE ${ARGN})
  set_target_properties(${target} PROPERTIES
    PREFIX "" SUFFIX .sys LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endfunction()
