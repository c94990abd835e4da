include_guard(GLOBAL)
# Drivers for 64-bit Windows, built with mingw-w64: freestanding code that imports nothing but the kernel.

find_path(VQS_DDK_INCLUDE ntddk.h
  PATHS /usr/x86_64-w64-mingw32/include/ddk NO_DEFAULT_PATH REQUIRED)

# The lowest Windows that drivers are for: 10, version 1709, the first that runs drivers from where packages are kept.
set(VQS_DRIVER_WINDOWS_BUILD 16299 CACHE INTERNAL "as INF files name it")
set(VQS_DRIVER_WINDOWS_HEADERS 0x0A000004 CACHE INTERNAL "as the kernel's headers name it")

# Code of a driver links vqs_kernel behind everything that refers to the kernel.
add_library(vqs_kernel INTERFACE)
target_include_directories(vqs_kernel SYSTEM INTERFACE ${VQS_DDK_INCLUDE})
# Defined by the toolchain's headers twice, which C++ does not take; and a warning about instructions that nobody uses.
target_compile_definitions(vqs_kernel INTERFACE NTDDI_VERSION=${VQS_DRIVER_WINDOWS_HEADERS}
  __INTRINSIC_DEFINED_InterlockedBitTestAndSet __INTRINSIC_DEFINED_InterlockedBitTestAndReset
  __INTRINSIC_DEFINED___cpuidex _CLANG_DISABLE_CRT_DEPRECATION_WARNINGS)
# Freestanding code has no unwind tables unless they are asked for, and the kernel needs them of every function: it unwinds
# the stack for exceptions of its own, whether or not a driver has any.
target_compile_options(vqs_kernel INTERFACE $<$<COMPILE_LANGUAGE:CXX>:
  -ffreestanding -fasynchronous-unwind-tables -fno-threadsafe-statics -mno-red-zone>)
target_link_options(vqs_kernel INTERFACE
  -nostdlib -s -Wl,--subsystem,native:10.0 -Wl,--major-os-version,10 -Wl,--minor-os-version,0
  -Wl,--entry,DriverEntry -Wl,--exclude-all-symbols
  # Nothing runs in a kernel before the driver does, so nothing could finish what the linker left open.
  -Wl,--disable-runtime-pseudo-reloc
  # What is needed once, when the driver is loaded, is given back then.
  "SHELL:-Xlinker -Xlink=-section:INIT,ERD"
  LINKER:-Xlink=-brepro LINKER:-Xlink=-release LINKER:-Xlink=-driver:wdm)
target_link_libraries(vqs_kernel INTERFACE vqs_hardened_kernel ntoskrnl)

function(vqs_add_kernel_driver target)
  add_library(${target} MODULE ${ARGN})
  set_target_properties(${target} PROPERTIES
    PREFIX "" SUFFIX .sys LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endfunction()
