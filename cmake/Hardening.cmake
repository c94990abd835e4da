include_guard(GLOBAL)
# What makes a mistake in shipped code harder to exploit: link vqs_hardened privately, to archives too.
add_library(vqs_hardened INTERFACE)
# The part of it that asks nothing of a runtime, for freestanding code.
add_library(vqs_hardened_freestanding INTERFACE)
target_link_libraries(vqs_hardened INTERFACE vqs_hardened_freestanding)

if(MINGW)
  # What drivers link instead. Control flow guard and shadow stacks are switched on by loaders of programs.
  add_library(vqs_hardened_kernel INTERFACE)
  target_compile_options(vqs_hardened_kernel INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
  target_link_options(vqs_hardened_kernel INTERFACE -Wl,--dynamicbase -Wl,--nxcompat)
  target_compile_options(vqs_hardened INTERFACE -mguard=cf -g -gcodeview
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=VexoQTFServices-${PROJECT_VERSION} -fdebug-compilation-dir=.)
  target_link_options(vqs_hardened INTERFACE
    -Wl,--guard-cf -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va LINKER:-Xlink=-cetcompat)
elseif(MSVC)
  # Every configuration gets its debug information, and all of it in the same way.
  set(CMAKE_MSVC_DEBUG_INFORMATION_FORMAT ProgramDatabase)
  target_compile_options(vqs_hardened INTERFACE /guard:cf)
  target_link_options(vqs_hardened INTERFACE /guard:cf /CETCOMPAT)
elseif(NOT VQS_WEB_ASSEMBLY) # a module's code and return addresses are out of its own reach
  include(CheckCXXCompilerFlag)
  foreach(flag -fcf-protection -mbranch-protection=standard -fstack-clash-protection)
    string(MAKE_C_IDENTIFIER VQS_HAS${flag} known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      target_compile_options(vqs_hardened_freestanding INTERFACE ${flag})
    endif()
  endforeach()
  target_compile_options(vqs_hardened INTERFACE -fstack-protector-strong)
  # Sanitizers check more than this, and do not go together with it; it needs optimised code.
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize|--coverage")
    target_compile_options(vqs_hardened INTERFACE
      "$<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  endif()
  target_link_options(vqs_hardened INTERFACE -Wl,-z,relro -Wl,-z,now
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
endif()

# The load configuration of an image, as a target of its own: one for all images of the same load flags.
function(vqs_load_config load_flags result)
  set(config vqs_load_config_${load_flags})
  if(NOT TARGET ${config})
    add_library(${config} OBJECT ${PROJECT_SOURCE_DIR}/cmake/load_config.c)
    target_compile_definitions(${config} PRIVATE VQS_DEPENDENT_LOAD_FLAGS=${load_flags})
    target_link_libraries(${config} PRIVATE vqs_options vqs_hardened)
  endif()
  set(${result} ${config} PARENT_SCOPE)
endfunction()

# A program or library for Windows as it is shipped: hardened, the same bytes from the same sources in any folder, with
# debug information in a .pdb file beside it. Other DLLs are loaded from where `load_flags` says, a value of
# LoadLibraryEx: 0x800 is the system's folder, 0xA00 the program's own as well.
function(vqs_windows_image target load_flags)
  target_link_libraries(${target} PRIVATE vqs_hardened)
  if(MSVC)
    target_link_options(${target} PRIVATE
      /DEBUG /PDBALTPATH:$<TARGET_FILE_BASE_NAME:${target}>.pdb /INCREMENTAL:NO /OPT:REF /OPT:ICF
      /Brepro /RELEASE /DEPENDENTLOADFLAG:${load_flags}
      # Of the C runtime, the part that is Windows' own is shared with other programs; the compiler's part is brought along.
      /NODEFAULTLIB:libucrt$<$<CONFIG:Debug>:d>.lib /DEFAULTLIB:ucrt$<$<CONFIG:Debug>:d>.lib)
    return()
  endif()
  vqs_load_config(${load_flags} config)
  target_link_libraries(${target} PRIVATE ${config})
  target_link_options(${target} PRIVATE
    # The start files bring debug information that no Windows tool reads.
    -s LINKER:--pdb=$<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb LINKER:-Xlink=-pdbaltpath:%_PDB%
    # The time stamp is a hash of the contents, so that two releases do not look alike to a debugger; and a checksum.
    LINKER:-Xlink=-brepro LINKER:-Xlink=-release)
endfunction()
