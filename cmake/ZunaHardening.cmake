# Protections against the exploitation of memory errors, for everything that is built here. A compiler that does not know
# one goes without it. Programs that are installed have POSITION_INDEPENDENT_CODE set besides.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)

check_pie_supported()  # links what is compiled as position-independent accordingly

set(CMAKE_REQUIRED_FLAGS -Werror)  # some compilers only warn of what they do not know
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "ZUNA_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(zuna_flags INTERFACE ${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)

# _FORTIFY_SOURCE needs optimisation. Where the compiler or the flags given to it set it, their level stays.
block()
  set(CMAKE_TRY_COMPILE_CONFIGURATION "${CMAKE_BUILD_TYPE}")
  string(TOUPPER "${CMAKE_BUILD_TYPE}" type)
  set(CMAKE_REQUIRED_FLAGS "${CMAKE_CXX_FLAGS_${type}}")
  check_cxx_source_compiles("
    #if !defined(__OPTIMIZE__) || defined(_FORTIFY_SOURCE)
    #error
    #endif
    int main() {}" ZUNA_FORTIFY)
endblock()
if(ZUNA_FORTIFY)
  target_compile_definitions(zuna_flags INTERFACE _FORTIFY_SOURCE=2)
endif()

if(NOT APPLE)  # the linker there has no such options; it does the same without them
  target_link_options(zuna_flags INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
endif()
