include_guard(GLOBAL)
# Header-only libraries from the system's packages. A cross compiler must not see the rest of /usr/include, so each
# library is linked into a folder of its own.

set(VQS_SYSTEM_INCLUDE /usr/include CACHE PATH "Where the header-only libraries are installed")

function(vqs_header_library target folder)
  set(staged ${PROJECT_BINARY_DIR}/header-libraries/${target})
  if(NOT EXISTS ${VQS_SYSTEM_INCLUDE}/${folder})
    message(WARNING "${VQS_SYSTEM_INCLUDE}/${folder} is missing, so there will be no tools and no tests: run scripts/install-packages.sh")
    set(VQS_HEADER_LIBRARIES_MISSING ON PARENT_SCOPE)
    return()
  endif()
  # A symbolic link is not everybody's right on Windows, and there is no other system's folder to hide.
  if(MSVC)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${VQS_SYSTEM_INCLUDE})
    return()
  endif()
  file(MAKE_DIRECTORY ${staged})
  file(CREATE_LINK ${VQS_SYSTEM_INCLUDE}/${folder} ${staged}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${staged})
endfunction()

vqs_header_library(vqs_cli11 CLI)
vqs_header_library(vqs_json nlohmann)
vqs_header_library(vqs_fmt fmt)
if(TARGET vqs_fmt)
  target_compile_definitions(vqs_fmt INTERFACE FMT_HEADER_ONLY)
endif()
