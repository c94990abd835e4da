# WebAssembly, as a module that its host calls: LLVM's compiler and linker with the C and C++ libraries of WASI.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(VQS_WEB_ASSEMBLY ON)

find_program(VQS_CLANG NAMES clang-19)
find_program(VQS_CLANGXX NAMES clang++-19)
find_program(VQS_WASM_LD NAMES wasm-ld-19)
find_program(VQS_LLVM_AR NAMES llvm-ar-19)
find_program(VQS_LLVM_RANLIB NAMES llvm-ranlib-19)
if(NOT VQS_CLANG OR NOT VQS_CLANGXX OR NOT VQS_WASM_LD OR NOT VQS_LLVM_AR OR NOT VQS_LLVM_RANLIB)
  message(FATAL_ERROR "The WebAssembly build lacks LLVM's tools: run scripts/install-packages.sh wasm")
endif()

set(CMAKE_C_COMPILER ${VQS_CLANG})
set(CMAKE_CXX_COMPILER ${VQS_CLANGXX})
set(CMAKE_C_COMPILER_TARGET wasm32-wasi)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
set(CMAKE_AR ${VQS_LLVM_AR})
set(CMAKE_RANLIB ${VQS_LLVM_RANLIB})
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -fno-exceptions -fno-rtti")
# A module of functions, without a main function.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-mexec-model=reactor -fuse-ld=${VQS_WASM_LD}")

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
